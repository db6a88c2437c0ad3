#include "FileNames.h"

#include <QTextBoundaryFinder>

namespace KivSystem {

namespace {

bool isForbidden(QChar character)
{
    return character.category() == QChar::Other_Control ||
           QStringLiteral("/\\:*?\"<>|").contains(character);
}

QString shortened(const QString &name)
{
    if (name.toUtf8().size() <= kLongestFileName) {
        return name;
    }
    QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, name);
    int length = 0;
    for (int end = characters.toNextBoundary(); end > 0; end = characters.toNextBoundary()) {
        if (name.left(end).toUtf8().size() > kLongestFileName) {
            break;
        }
        length = end;
    }
    return name.left(length);
}

} // namespace

QString fileNameFrom(const QString &proposedName)
{
    // Through UTF-8 and back: half a surrogate pair, which no file name can hold, turns into "?".
    const QByteArray utf8 = proposedName.toUtf8();
    QString name = shortened(QString::fromUtf8(utf8.constData(), utf8.size()));
    for (QChar &character : name) {
        if (isForbidden(character)) {
            character = QLatin1Char('_');
        }
    }
    if (name.isEmpty()) {
        return QStringLiteral("_");
    }
    if (name.startsWith(QLatin1Char('.'))) {
        name[0] = QLatin1Char('_');
    }
    return name;
}

QString FileNames::claim(const QString &proposedName)
{
    const QString base = fileNameFrom(proposedName);
    QString name = base;
    const auto folded = [&name] {
        return name.normalized(QString::NormalizationForm_C).toCaseFolded();
    };
    for (int number = 2; m_taken.contains(folded()); ++number) {
        name = QStringLiteral("%1 (%2)").arg(base).arg(number);
    }
    m_taken.insert(folded());
    return name + QLatin1Char('.') + m_extension;
}

} // namespace KivSystem
