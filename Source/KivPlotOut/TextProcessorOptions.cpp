#include "TextProcessorOptions.h"

namespace KivSystem {
namespace {

enum OptionNumber
{
    FieldSeparator = 0,
    RepeatSeparator = 1,
    OneLine = 2,
};

QByteArray defaultFieldSeparator()
{
    return QByteArrayLiteral("\t");
}

QByteArray defaultRepeatSeparator()
{
    return QByteArrayLiteral("\x1D");
}

} // namespace

TextProcessorOptions::TextProcessorOptions()
{
    setFiledSeperator(defaultFieldSeparator());
    setrepeatSeperator(defaultRepeatSeparator());
    setOneLine(false);
}

QString TextProcessorOptions::sectionName() const
{
    return QStringLiteral("text_export");
}

QByteArray TextProcessorOptions::filedSeperator() const
{
    return option(FieldSeparator, defaultFieldSeparator()).toByteArray();
}

void TextProcessorOptions::setFiledSeperator(const QByteArray &separator)
{
    m_options[FieldSeparator] = separator;
}

QByteArray TextProcessorOptions::repeatSeperator() const
{
    return option(RepeatSeparator, defaultRepeatSeparator()).toByteArray();
}

void TextProcessorOptions::setrepeatSeperator(const QByteArray &separator)
{
    m_options[RepeatSeparator] = separator;
}

bool TextProcessorOptions::oneLine() const
{
    return option(OneLine, false).toBool();
}

void TextProcessorOptions::setOneLine(const bool &oneLine)
{
    m_options[OneLine] = oneLine;
}

} // namespace KivSystem
