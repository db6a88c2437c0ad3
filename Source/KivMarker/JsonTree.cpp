#include "JsonTree.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace KivSystem {
namespace {

constexpr int kIndent = 2;

template <class Number>
QByteArray shortest(Number value)
{
    // Plain digits as long as they are readable; both forms are the shortest that reads back.
    const Number size = std::abs(value);
    const bool plain = size == 0 || (size >= Number(1e-6) && size < Number(1e15));
    std::array<char, 64> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), value,
        plain ? std::chars_format::fixed : std::chars_format::scientific);
    return QByteArray(digits.data(), static_cast<int>(result.ptr - digits.data()));
}

QByteArray quoted(const QString &text)
{
    QByteArray bytes("\"");
    for (const char character : text.toUtf8()) {
        switch (character) {
        case '"':
            bytes += "\\\"";
            break;
        case '\\':
            bytes += "\\\\";
            break;
        case '\b':
            bytes += "\\b";
            break;
        case '\f':
            bytes += "\\f";
            break;
        case '\n':
            bytes += "\\n";
            break;
        case '\r':
            bytes += "\\r";
            break;
        case '\t':
            bytes += "\\t";
            break;
        default:
            if (static_cast<unsigned char>(character) < 0x20) {
                bytes += "\\u00" + QByteArray::number(int(character), 16).rightJustified(2, '0');
            } else {
                bytes += character;
            }
        }
    }
    return bytes += '"';
}

} // namespace

JsonTree JsonTree::number(double value)
{
    return JsonTree(Kind::Plain, shortest(value));
}

JsonTree JsonTree::number(float value)
{
    return JsonTree(Kind::Plain, shortest(value));
}

JsonTree JsonTree::integer(qint64 value)
{
    return JsonTree(Kind::Plain, QByteArray::number(value));
}

JsonTree JsonTree::boolean(bool value)
{
    return JsonTree(Kind::Plain, value ? "true" : "false");
}

JsonTree JsonTree::text(const QString &value)
{
    return JsonTree(Kind::Plain, quoted(value));
}

JsonTree JsonTree::object()
{
    return JsonTree(Kind::Object);
}

JsonTree JsonTree::array()
{
    return JsonTree(Kind::Array);
}

JsonTree JsonTree::column()
{
    return JsonTree(Kind::Column);
}

JsonTree &JsonTree::add(const char *key, JsonTree value)
{
    m_children.emplace_back(key, std::move(value));
    return *this;
}

JsonTree &JsonTree::append(JsonTree value)
{
    m_children.emplace_back(nullptr, std::move(value));
    return *this;
}

JsonTree JsonTree::flattened() const
{
    QByteArray bytes;
    write(bytes, 0, true);
    return JsonTree(Kind::Plain, bytes);
}

QByteArray JsonTree::toBytes() const
{
    QByteArray bytes;
    write(bytes, 0, false);
    return bytes += '\n';
}

bool JsonTree::fitsOneLine() const
{
    return m_children.empty() ||
           (m_kind != Kind::Column &&
               std::all_of(m_children.begin(), m_children.end(),
                   [](const auto &child) { return child.second.m_kind == Kind::Plain; }));
}

void JsonTree::write(QByteArray &bytes, int depth, bool oneLine) const
{
    if (m_kind == Kind::Plain) {
        bytes += m_text;
        return;
    }
    const bool line = oneLine || fitsOneLine();
    const QByteArray inner = line ? QByteArray() : '\n' + QByteArray(kIndent * (depth + 1), ' ');
    bytes += m_kind == Kind::Object ? '{' : '[';
    bool first = true;
    for (const auto &[key, value] : m_children) {
        if (!first) {
            bytes += line ? ", " : ",";
        }
        first = false;
        bytes += inner;
        if (key != nullptr) {
            bytes.append('"').append(key).append("\": ");
        }
        value.write(bytes, depth + 1, line);
    }
    if (!line) {
        bytes += '\n' + QByteArray(kIndent * depth, ' ');
    }
    bytes += m_kind == Kind::Object ? '}' : ']';
}

} // namespace KivSystem
