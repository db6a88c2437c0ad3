#include "Console.h"
#include "HostSettings.h"
#include "Verbs.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QSettings>

namespace KivSystem {

int listSettings(const SettingsOptions &options, const Console &console)
{
    const QSettings store;
    QJsonArray list;
    for (const Setting &setting : hostSettings()) {
        const QString value = currentText(setting, store);
        const QString fault = findStoredFault(setting, store);
        if (!fault.isEmpty()) {
            console.message(QStringLiteral("%1: %2").arg(store.fileName(), fault));
        }
        if (options.json) {
            list.append(QJsonObject{{QStringLiteral("name"), setting.name},
                {QStringLiteral("value"), value}, {QStringLiteral("type"), setting.type.meaning},
                {QStringLiteral("default"), setting.defaultText},
                {QStringLiteral("meaning"), setting.meaning}});
        } else {
            console.out << setting.name << " = " << onOneLine(value) << '\n'
                        << "    " << setting.meaning << '\n'
                        << "    " << setting.type.meaning << "; default: " << setting.defaultText
                        << '\n';
        }
    }
    if (options.json) {
        console.json(list);
    }
    return ExitDone;
}

} // namespace KivSystem
