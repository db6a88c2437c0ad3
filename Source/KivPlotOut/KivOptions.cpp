#include "KivOptions.h"

#include <QSettings>

namespace {

QString optionKey(int number)
{
    return QLatin1Char('_') + QString::number(number);
}

} // namespace

void KivOptions::save(const QString &prefix)
{
    QSettings settings;
    settings.beginGroup(groupName(prefix));
    for (int number = 0; number < static_cast<int>(m_options.size()); ++number) {
        settings.setValue(optionKey(number), m_options[number]);
    }
}

void KivOptions::restore(const QString &prefix)
{
    QSettings settings;
    settings.beginGroup(groupName(prefix));
    for (int number = 0; number < static_cast<int>(m_options.size()); ++number) {
        const QString key = optionKey(number);
        if (settings.contains(key)) {
            m_options[number] = settings.value(key);
        }
    }
}

QVariant KivOptions::option(int number, const QVariant &missing) const
{
    const auto found = m_options.find(number);
    return found == m_options.end() ? missing : found->second;
}

QString KivOptions::groupName(const QString &prefix) const
{
    return prefix + sectionName() + QLatin1String("/option");
}
