// TextIndexList: which fields a text export writes, in their order. The numbers of the fields are
// stored by users and never change.
//
//     TextIndexList list{FieldFileName, FieldFabricName};
//     list.saveAsPreferences();                             // settings key "marker_export_list"

#ifndef KIVPLOTOUT_TEXTINDEXLIST_H
#define KIVPLOTOUT_TEXTINDEXLIST_H

#include <QMetaType>
#include <QVector>

#include <initializer_list>

class QDataStream;

namespace KivSystem {

/// The fields, in three groups: of the marker, of a fabric, of a layer on a fabric.
enum TextField : int
{
    FieldFileName = 0,
    FieldLocation = 1,
    FieldComments = 2,
    FieldKeywords = 3,
    FieldCreationDate = 4,
    FieldModificationDate = 5,
    FieldDateStamp = 6,
    FieldStyleName = 7,
    FieldFabricName = 8,
    FieldMarkerType = 9,
    FieldOneWay = 10,
    FieldSpacing = 11,
    FieldWidth = 12,
    FieldLayerName = 13,
    FieldLength = 14,
    FieldEstimate = 15,
    FieldEfficiency = 16,
    FieldPlacedPieces = 17,
    FieldPiecesToBePlaced = 18,
    FieldSize = 19,
    FieldSpecial = 20,
    FieldBreakdownValue = 21,
};

/// A value with shared data. It may hold a field twice, and numbers that are no field.
class TextIndexList
{
public:
    TextIndexList() = default;
    TextIndexList(std::initializer_list<int> indexes) : m_indexes(indexes) {}

    /// All fields in the order of their numbers.
    static TextIndexList loadDefault();
    /// The stored list, empty when none is stored. A text that is not a number reads as 0.
    static TextIndexList loadFromPreferences();
    /// Stores the list as a list of strings.
    void saveAsPreferences() const;

    int size() const { return m_indexes.size(); }
    bool isEmpty() const { return m_indexes.isEmpty(); }
    /// By 0-based position, which must exist.
    int operator[](int position) const { return m_indexes[position]; }
    void append(int index) { m_indexes.append(index); }
    QVector<int>::const_iterator begin() const { return m_indexes.cbegin(); }
    QVector<int>::const_iterator end() const { return m_indexes.cend(); }

    bool operator==(const TextIndexList &other) const { return m_indexes == other.m_indexes; }
    bool operator!=(const TextIndexList &other) const { return m_indexes != other.m_indexes; }

private:
    QVector<int> m_indexes;
};

/// A 32-bit count, then a 32-bit number for each element. Reading appends to what the list holds.
QDataStream &operator<<(QDataStream &stream, const TextIndexList &list);
QDataStream &operator>>(QDataStream &stream, TextIndexList &list);

} // namespace KivSystem

Q_DECLARE_METATYPE(KivSystem::TextIndexList)

#endif
