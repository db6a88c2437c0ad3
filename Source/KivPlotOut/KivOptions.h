// KivOptions: a group of options with numbered keys that lasts in the application's settings.
//
// The group `<prefix><sectionName()>/option` holds the option n under the key `_n`:
//
//     [text_export]
//     option\_0="@ByteArray(;)"

#ifndef KIVPLOTOUT_KIVOPTIONS_H
#define KIVPLOTOUT_KIVOPTIONS_H

#include <QString>
#include <QVariant>

#include <map>

/// A subclass fills the map in its constructor with all of its options and their defaults, under
/// consecutive numbers from 0: saving and restoring go by the map's size.
class KivOptions
{
public:
    /// Stores every option.
    virtual void save(const QString &prefix);
    /// Takes over the stored options; one that is not stored keeps its value.
    virtual void restore(const QString &prefix);
    /// The name of this group of options.
    virtual QString sectionName() const = 0;

protected:
    KivOptions() = default;
    KivOptions(const KivOptions &) = default;
    KivOptions &operator=(const KivOptions &) = default;
    ~KivOptions() = default;

    /// The value of an option, or `missing` when there is none. Never inserts.
    QVariant option(int number, const QVariant &missing) const;

    std::map<int, QVariant> m_options;

private:
    QString groupName(const QString &prefix) const;
};

#endif
