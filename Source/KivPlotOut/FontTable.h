// FontTable: the letters of the pen, from a file of strokes below the plug-ins directory. All whole
// numbers are little-endian; a glyph's bytes are counted from the end of the index.
//
//     int32 count                        number of glyphs
//     count x { uint16 code,             the character, ascending
//               int32 offset }           place of its glyph
//     ... { int8 steps, uint8 unused,
//           steps x { uint8 command,     0 move, 1 line, 2 control point of a curve from the step
//                                        before it to the step behind it
//                     int8 x, int8 y } }
//
// A glyph fills an em of 100 units. Its middle lies at y = 50 and at x = 50, or at x = 75 up to
// U+00FF, where it has half the width:
//
//     FontTable font(kFontTableFile);
//     double advance = 0;
//     font.charToPolylines(QChar('A'), 1.2, &advance); // strokes about (0, 0); advance is 0.6
//
// A letter that is not in the file, or that cannot be read, is a gap. Failures are only logged.

#ifndef KIVPLOTOUT_FONTTABLE_H
#define KIVPLOTOUT_FONTTABLE_H

#include <QHash>
#include <QList>
#include <QPointF>
#include <QString>

#include <memory>

class QByteArray;
class QFile;

namespace KivSystem {

/// The file of the letters, in the directory `io`.
extern const char *const kFontTableFile;

/// A list with the interface of QList.
template <class T>
class QListEx : public QList<T>
{
public:
    using QList<T>::QList;
};

/// Keeps the file open, and the letters that it has drawn; use an object in one thread only.
class FontTable
{
public:
    using Polylines = QList<QListEx<QPointF>>;

    /// `fileName` is a name below the directory `io`.
    explicit FontTable(const QString &fileName);
    ~FontTable();

    FontTable(const FontTable &) = delete;
    FontTable &operator=(const FontTable &) = delete;

    /// Opens the file unless it is open.
    void open();

    /// The strokes of `c` about (0, 0) at a letter height, in the unit of `height`. `advance` is
    /// where the next letter goes, also behind a letter without strokes.
    Polylines charToPolylines(QChar c, double height, double *advance);

    /// The bytes behind `steps`; empty when there is no such glyph.
    QByteArray readGlyphData(unsigned short code);
    /// The strokes of what readGlyphData() returns, in font units.
    Polylines parseGlyphData(const QByteArray &data);

    // From a text size in points to cm, with the leading.
    static double charHeight(double fontSize);
    static double charWidth(const QChar &c, double fontSize);
    static double textLineWidth(const QString &text, double fontSize);

protected:
    std::unique_ptr<QFile> file; ///< null when it could not be opened
    QString fileName;

private:
    bool rewind();
    bool seek(qint64 position);
    bool readBytes(char *bytes, qint64 size);
    bool findGlyph(unsigned short code, qint64 count, qint64 &found);
    void logFailure(const QString &message) const;

    QHash<unsigned short, Polylines> m_glyphs; // in font units
};

} // namespace KivSystem

#endif
