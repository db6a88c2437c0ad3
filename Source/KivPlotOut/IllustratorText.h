// KivIllustrator: texts of the file, as text objects and not as outlines, and how long they are:
//
//     u
//     /_Sans_Serif 2 2 0 1 z             font, number of the letter size, leading
//     [1 0 0 1 28.35 85.05]e             place
//     9 (12 Paired)t                     a line for each line of the text
//     T
//     U

#ifndef KIVPLOTOUT_ILLUSTRATORTEXT_H
#define KIVPLOTOUT_ILLUSTRATORTEXT_H

#include <QFlags>
#include <QString>
#include <Qt>

class QTextStream;

namespace KivSystem {

class CDbTextObject;
class GeoRectangle;

namespace KivIllustrator {

/// Length in cm at a letter size in points, from the number of characters alone.
double Mk_TEXT_Get_Longueur_String_CM(const QString &text, short letterSize);

/// The largest letter size from `letterSize` down in which the text is at most `maxLength` cm long,
/// 10 if there is none. Letter sizes are 10, 18, 24, 27, 30 and 36; another one stays as it is.
short Mk_TEXT_Avoir_Letter_Size_Max_String(const QString &text, short letterSize, double maxLength);

/// The line with the most characters, the first of several; empty for a text without lines.
void Mk_TEXT_Avoir_Plus_Longue_String(const CDbTextObject &text, QString &longest);

/// Destroys `*text`, which was made with new, and sets it to null.
void Mk_TEXT_Detruire(CDbTextObject **text);

/// Cuts a text in two at the blank nearest to its middle, which goes: `text` keeps what is behind
/// it. Without a blank away from both ends the result is false, `firstPart` the whole text, and
/// `text` as it was.
bool Decouper_texte(QString &text, QString &firstPart);

/// The letter size of all texts of a file, the user's setting: 18 where none is stored.
short lettersOfFile();

/// The alignment must be left, centred or right; another ends the program. The reader's code for
/// it is 1 in all cases.
void ILLUST_Set_Fonte_Et_Alignement(
    QTextStream &out, short letterSize, QFlags<Qt::AlignmentFlag> alignment);

/// The place of the first line of a text that has that box, in cm, shifted by x0 along the length.
void ILLUST_Place_Point_Depart_Texte(QTextStream &out, const GeoRectangle &box, double x0,
    short lineCount, QFlags<Qt::AlignmentFlag> alignment);

/// A line of a text block. No character is escaped.
void writeTextLine(QTextStream &out, const QString &line);
void endTextBlock(QTextStream &out);

/// A whole text, shifted by x0 cm. Its own letter size does not count.
void ILLUST_Texte(QTextStream &out, CDbTextObject *text, double x0);

} // namespace KivIllustrator
} // namespace KivSystem

#endif
