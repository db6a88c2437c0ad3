#include "JsonKeys.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace KivSystem {
namespace {

// An object or array that is open at the place of the scan. Levels are used again and again: most
// objects of a marker are points, and there are many of them.
struct Level
{
    bool object = false;
    std::vector<std::string_view> keys; // into the text, or into `unescaped`
    std::deque<std::string> unescaped;
    int index = 0; // of the item that is being read

    void open(bool isObject)
    {
        object = isObject;
        keys.clear();
        unescaped.clear();
        index = 0;
    }
};

class Scan
{
public:
    explicit Scan(const QByteArray &json) : m_json(json) {}

    std::optional<RepeatedKey> run()
    {
        std::optional<RepeatedKey> found;
        for (int position = 0; position < m_json.size() && !found; ++position) {
            switch (m_json[position]) {
            case '{':
            case '[':
                open(m_json[position] == '{');
                break;
            case '}':
                found = repeatedKey();
                [[fallthrough]];
            case ']':
                close();
                break;
            case ',':
                m_keyExpected = m_levels[m_depth - 1].object;
                ++m_levels[m_depth - 1].index;
                break;
            case '"':
                position = readString(position) - 1;
                break;
            default:
                break;
            }
        }
        return found;
    }

private:
    void open(bool object)
    {
        if (m_levels.size() == m_depth) {
            m_levels.emplace_back();
        }
        m_levels[m_depth++].open(object);
        m_keyExpected = object;
    }

    void close()
    {
        --m_depth;
        m_keyExpected = false;
    }

    // Gives the position behind the string that begins at `begin`, and keeps it when it is a key.
    int readString(int begin)
    {
        int end = begin + 1;
        bool escaped = false;
        while (m_json[end] != '"') {
            escaped = escaped || m_json[end] == '\\';
            end += m_json[end] == '\\' ? 2 : 1;
        }
        ++end;
        if (m_keyExpected) {
            m_keyExpected = false;
            Level &level = m_levels[m_depth - 1];
            if (escaped) {
                const QByteArray text = '[' + m_json.mid(begin, end - begin) + ']';
                const QString key = QJsonDocument::fromJson(text).array().at(0).toString();
                level.unescaped.push_back(key.toStdString());
                level.keys.emplace_back(level.unescaped.back());
            } else {
                level.keys.emplace_back(
                    m_json.constData() + begin + 1, static_cast<std::size_t>(end - begin - 2));
            }
        }
        return end;
    }

    // Of the innermost object, whose end has been reached.
    std::optional<RepeatedKey> repeatedKey()
    {
        std::vector<std::string_view> &keys = m_levels[m_depth - 1].keys;
        std::sort(keys.begin(), keys.end());
        const auto twice = std::adjacent_find(keys.begin(), keys.end());
        if (twice == keys.end()) {
            return std::nullopt;
        }
        return RepeatedKey{path(), QString::fromStdString(std::string(*twice))};
    }

    QString path() const
    {
        QString path = QStringLiteral("$");
        for (std::size_t depth = 0; depth + 1 < m_depth; ++depth) {
            const Level &level = m_levels[depth];
            path += level.object
                        ? QLatin1Char('.') + QString::fromStdString(std::string(level.keys.back()))
                        : QStringLiteral("[%1]").arg(level.index);
        }
        return path;
    }

    const QByteArray &m_json;
    std::deque<Level> m_levels; // the first m_depth of them are open
    std::size_t m_depth = 0;
    bool m_keyExpected = false;
};

} // namespace

std::optional<RepeatedKey> findRepeatedKey(const QByteArray &json)
{
    return Scan(json).run();
}

} // namespace KivSystem
