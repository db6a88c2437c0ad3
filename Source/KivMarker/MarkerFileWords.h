// The words and limits of the marker file, shared by its reader and its writer.

#ifndef KIVMARKER_MARKERFILEWORDS_H
#define KIVMARKER_MARKERFILEWORDS_H

#include "JsonNode.h"
#include "KivMarker/Fabric.h"
#include "KivMarker/Point.h"
#include "KivMarker/Polygon.h"

#include <QDateTime>
#include <QLatin1String>
#include <QStringList>

#include <array>
#include <optional>

namespace KivSystem {

constexpr double kMaxCoordinate = 100000;          // cm
constexpr int kMaxCount = 32767;                   // quantities and indexes are short
constexpr double kMaxPrecise = 9007199254740992.0; // whole numbers that a double holds exactly

constexpr char kFormatName[] = "kiv-marker";
constexpr int kFormatVersion = 1;

template <class Value>
struct Word
{
    Value value;
    const char *word;
};

// The first word of each table is the value of a missing key.
extern const std::array<Word<FabricType>, 4> kFabricTypeWords;
extern const std::array<Word<MarkerPointType>, 8> kPointTypeWords;
extern const std::array<Word<InternalLine::Kind>, 3> kLineKindWords;
extern const std::array<Word<Qt::AlignmentFlag>, 3> kAlignmentWords;
extern const std::array<Word<TextWorkSection>, 3> kSectionWords;
extern const std::array<Word<GroupPlace>, 2> kPlaceWords;
extern const std::array<Word<bool>, 2> kSideWords; // true is left
extern const std::array<Word<CutDownKind>, 3> kCutDownWords;
extern const std::array<Word<float PunchFeature::*>, 16> kPunchSizeWords;
extern const std::array<Word<QString PieceData::*>, 6> kPieceTextWords;

// `2026-03-14T09:30:00`, whatever the locale; reading it gives an invalid time for any other text.
QString stampText(const QDateTime &stamp);
QDateTime stampOf(const QString &text);

// Whether a point of that type has a notch vector, and whether it may have a punch.
bool isNotchType(int pointType);
bool isPunchType(int pointType);

// The value of a word; fails with the list of the words.
template <class Value, std::size_t Count>
Value valueOfWord(const JsonNode &node, const std::array<Word<Value>, Count> &words)
{
    QStringList known;
    for (const Word<Value> &word : words) {
        if (node.value().toString() == QLatin1String(word.word)) {
            return word.value;
        }
        known << QLatin1Char('"') + QLatin1String(word.word) + QLatin1Char('"');
    }
    node.failType(QStringLiteral("one of ") + known.join(QStringLiteral(", ")));
}

template <class Value, std::size_t Count>
Value wordMember(const JsonNode &node, const char *key, const std::array<Word<Value>, Count> &words)
{
    return node.has(key) ? valueOfWord(node.member(key), words) : words.front().value;
}

// The word of a value that the table holds.
template <class Value, std::size_t Count>
QString wordOf(Value value, const std::array<Word<Value>, Count> &words)
{
    for (const Word<Value> &word : words) {
        if (word.value == value) {
            return QString::fromLatin1(word.word);
        }
    }
    return QString::fromLatin1(words.front().word);
}

} // namespace KivSystem

#endif
