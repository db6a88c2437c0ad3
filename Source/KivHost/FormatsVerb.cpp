#include "Console.h"
#include "KivCore/ExporterFactory.h"
#include "Verbs.h"

#include <QJsonArray>
#include <QJsonObject>

namespace KivSystem {

int listFormats(
    const FormatsOptions &options, const ExporterFactory &factory, const Console &console)
{
    QJsonArray list;
    for (const QString &name : factory.supportedFormats()) {
        FileFormat format;
        factory.describeFormat(name, format);
        const QStringList filters = format.filter.split(QLatin1Char('\t'));
        if (options.json) {
            list.append(QJsonObject{{QStringLiteral("name"), format.name},
                {QStringLiteral("id"), format.id}, {QStringLiteral("tag"), format.tag},
                {QStringLiteral("filters"), QJsonArray::fromStringList(filters)}});
        } else {
            console.out << format.name << '\t' << format.id << '\t' << format.tag << '\t'
                        << filters.join(QStringLiteral(", ")) << '\n';
        }
    }
    if (options.json) {
        console.json(list);
    }
    return ExitDone;
}

} // namespace KivSystem
