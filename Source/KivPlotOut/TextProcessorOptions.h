// TextProcessorOptions: the separators of the text exports, kept in the settings group
// "text_export/option".

#ifndef KIVPLOTOUT_TEXTPROCESSOROPTIONS_H
#define KIVPLOTOUT_TEXTPROCESSOROPTIONS_H

#include "KivOptions.h"

#include <QByteArray>

namespace KivSystem {

/// Separators are bytes: they reach the file as they stand, whatever its encoding.
class TextProcessorOptions final : public KivOptions
{
public:
    /// A tab between fields, 0x1D between entries, all sizes on one line.
    TextProcessorOptions();

    QString sectionName() const override;

    /// Between two fields of a line.
    QByteArray filedSeperator() const;
    void setFiledSeperator(const QByteArray &separator);

    /// Between the entries of a repeating field.
    QByteArray repeatSeperator() const;
    void setrepeatSeperator(const QByteArray &separator);

    /// One line per size.
    bool oneLine() const;
    void setOneLine(const bool &oneLine);
};

} // namespace KivSystem

#endif
