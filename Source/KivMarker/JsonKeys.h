// Repeated keys in the objects of a JSON text. QJsonDocument keeps the last of them and says
// nothing, so that what the others said would be lost.

#ifndef KIVMARKER_JSONKEYS_H
#define KIVMARKER_JSONKEYS_H

#include <QByteArray>
#include <QString>

#include <optional>

namespace KivSystem {

struct RepeatedKey
{
    QString path; // of the object
    QString key;
};

// `json` is well-formed: the caller has parsed it.
std::optional<RepeatedKey> findRepeatedKey(const QByteArray &json);

} // namespace KivSystem

#endif
