#include "TextIndexList.h"

#include "KivCore/Init.h"

#include <QDataStream>
#include <QSettings>
#include <QStringList>
#include <QVariant>

namespace KivSystem {
namespace {

QString preferencesKey()
{
    return QStringLiteral("marker_export_list");
}

// Registers the type, so that a list can travel in a QVariant, together with its two stream
// operators.
void registerTextIndexList()
{
    qRegisterMetaType<TextIndexList>("KivSystem::TextIndexList");
    qRegisterMetaTypeStreamOperators<TextIndexList>("KivSystem::TextIndexList");
}

bool registerWithHost()
{
    constexpr int kPriority = 0;
    KivInit::instance()->registerRunOnce(&registerTextIndexList, KivInit::StageAfterQt, kPriority);
    return true;
}

[[maybe_unused]] const bool registered = registerWithHost();

} // namespace

TextIndexList TextIndexList::loadDefault()
{
    TextIndexList list;
    for (int field = FieldFileName; field <= FieldBreakdownValue; ++field) {
        list.append(field);
    }
    return list;
}

TextIndexList TextIndexList::loadFromPreferences()
{
    const QSettings settings;
    const QStringList texts = settings.value(preferencesKey(), QVariant()).toStringList();
    TextIndexList list;
    for (const QString &text : texts) {
        list.append(text.toInt());
    }
    return list;
}

void TextIndexList::saveAsPreferences() const
{
    QStringList texts;
    for (const int index : m_indexes) {
        texts.append(QString::number(index));
    }
    QSettings settings;
    settings.setValue(preferencesKey(), texts);
}

QDataStream &operator<<(QDataStream &stream, const TextIndexList &list)
{
    stream << static_cast<qint32>(list.size());
    for (const int index : list) {
        stream << static_cast<qint32>(index);
    }
    return stream;
}

QDataStream &operator>>(QDataStream &stream, TextIndexList &list)
{
    qint32 count = 0;
    stream >> count;
    // A stream that ends early must not fill the list with the zeros of an absurd count.
    for (qint32 read = 0; read < count && stream.status() == QDataStream::Ok; ++read) {
        qint32 index = 0;
        stream >> index;
        if (stream.status() == QDataStream::Ok) {
            list.append(index);
        }
    }
    return stream;
}

} // namespace KivSystem
