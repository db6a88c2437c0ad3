// What the tests of the pen font share: font files made of bytes, and the warnings about them.

#ifndef KIVTESTS_KIVPLOTOUT_PENFONT_H
#define KIVTESTS_KIVPLOTOUT_PENFONT_H

#include "FontTable.h"

#include "KivCore/Log.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QtEndian>

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace KivSystem {

inline QByteArray littleEndian(qint32 value, int size)
{
    char bytes[4];
    qToLittleEndian(value, bytes);
    return QByteArray(bytes, size);
}

inline QByteArray bytesOf(const std::vector<int> &values)
{
    QByteArray bytes;
    for (const int value : values) {
        bytes.append(static_cast<char>(value));
    }
    return bytes;
}

/// A font file with glyph records as they are given.
inline QByteArray fontBytes(const std::map<int, QByteArray> &glyphs)
{
    QByteArray index = littleEndian(static_cast<qint32>(glyphs.size()), 4);
    QByteArray data;
    for (const auto &[code, glyph] : glyphs) {
        index += littleEndian(code, 2) + littleEndian(data.size(), 4);
        data += glyph;
    }
    return index + data;
}

inline void writeFont(const QString &plugins, const QByteArray &bytes)
{
    ASSERT_TRUE(QDir(plugins).mkpath("io"));
    QFile font(QDir(plugins).filePath("io/" + QString(kFontTableFile)));
    ASSERT_TRUE(font.open(QIODevice::WriteOnly));
    ASSERT_EQ(font.write(bytes), bytes.size());
}

/// Records what is logged as long as it lives.
class WarningRecord
{
public:
    WarningRecord() : m_before(setDefaultLogger(LogWarning, std::make_unique<Recorder>(m_lines))) {}
    ~WarningRecord() { setDefaultLogger(LogWarning, std::move(m_before)); }
    WarningRecord(const WarningRecord &) = delete;
    WarningRecord &operator=(const WarningRecord &) = delete;

    /// The lines since the last call.
    std::vector<std::string> take() { return std::exchange(m_lines, {}); }

private:
    class Recorder : public TextLineComposer<char>
    {
    public:
        explicit Recorder(std::vector<std::string> &lines) : m_recorded(lines) {}

    protected:
        void writeLine(const std::string &line) override { m_recorded.push_back(line); }

    private:
        std::vector<std::string> &m_recorded;
    };

    std::vector<std::string> m_lines;
    std::unique_ptr<TextLineComposer<char>> m_before;
};

} // namespace KivSystem

#endif
