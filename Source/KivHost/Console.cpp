#include "Console.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace KivSystem {

HostError::HostError(ExitStatus status, const QString &sentence)
    : std::runtime_error(sentence.toUtf8().toStdString())
    , m_status(status)
{}

void Console::message(const QString &sentence) const
{
    err << "kivhost: " << onOneLine(sentence) << '\n';
    err.flush();
}

void Console::json(const QJsonValue &value) const
{
    const QJsonDocument document =
        value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
    out << QString::fromUtf8(document.toJson(QJsonDocument::Indented));
}

int runReporting(const Console &console, const std::function<int()> &verb)
{
    try {
        return verb();
    } catch (const HostError &error) {
        console.message(error.sentence());
        return error.status();
    } catch (const std::bad_alloc &) {
        console.message(QStringLiteral("there is not enough memory"));
    } catch (const std::exception &error) {
        console.message(QStringLiteral("unexpected failure: %1").arg(error.what()));
    }
    return ExitFailed;
}

QString onOneLine(QString text)
{
    for (QChar &character : text) {
        if (character.category() == QChar::Other_Control ||
            character.category() == QChar::Separator_Line ||
            character.category() == QChar::Separator_Paragraph) {
            character = QLatin1Char(' ');
        }
    }
    return text;
}

void requireReadableFile(const QString &path)
{
    const auto fail = [&path](const QString &reason) {
        throw HostError(ExitUnreadable, QStringLiteral("%1: %2").arg(path, reason));
    };
    const QFileInfo info(path);
    if (path.isEmpty()) {
        throw HostError(ExitUnreadable, QStringLiteral("a file's name is empty"));
    }
    if (!info.exists()) {
        fail(QStringLiteral("there is no such file"));
    }
    if (info.isDir()) {
        fail(QStringLiteral("is a directory, expected a file"));
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        fail(QStringLiteral("cannot be read: %1").arg(file.errorString()));
    }
}

} // namespace KivSystem
