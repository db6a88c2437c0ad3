#include "FormatData.h"

#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QMap>

namespace KivSystem {

QString findFormatDataFault(const QString &tag, const QDir &pluginsDirectory)
{
    static const QMap<QString, QString> configurations = {
        {QStringLiteral("cut_ansi"), QStringLiteral("io/CutFileConfig/ANSI.xml")},
        {QStringLiteral("cut_eastman"), QStringLiteral("io/CutFileConfig/Eastman.xml")},
    };
    const auto name = configurations.constFind(tag);
    if (name == configurations.constEnd()) {
        return QString();
    }
    QFile file(pluginsDirectory.absoluteFilePath(*name));
    if (!file.open(QIODevice::ReadOnly)) {
        return QStringLiteral("%1: %2").arg(file.fileName(), file.errorString());
    }
    QDomDocument document;
    QString fault;
    int line = 0;
    int column = 0;
    if (!document.setContent(&file, &fault, &line, &column)) {
        return QStringLiteral("%1 (line %2, column %3): %4")
            .arg(file.fileName())
            .arg(line)
            .arg(column)
            .arg(fault);
    }
    return QString();
}

} // namespace KivSystem
