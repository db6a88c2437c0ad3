// HostSettings: the settings that the command line can show and set, and the store of one run.
//
//     const SettingValue value = parseSetting("field_separator=\\x3B");
//     const SettingsOverlay overlay({}, {value});    // QSettings() is a copy with ";" from here on
#ifndef KIVHOST_HOSTSETTINGS_H
#define KIVHOST_HOSTSETTINGS_H

#include "Interruption.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QVariant>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QSettings;

namespace KivSystem {

struct Console;

/// Where a run takes its settings from.
struct SettingsSource
{
    QStringList assignments; ///< NAME=VALUE, over those of the file
    QString file;            ///< empty: the user's own settings
};

/// How a setting reads on the command line and in the store.
struct SettingType
{
    /// What a person chooses or types.
    enum class Input
    {
        Choice, ///< one of `choices`
        WholeNumber,
        Number,
        Flag,
        Color,
        Text,
    };

    QString meaning; ///< what a value may be, as in "expected a whole number from 0 to 6"
    /// The value to store; invalid when the text is none.
    std::function<QVariant(const QString &)> parse;
    /// The reverse, also for what a store file holds.
    std::function<QString(const QVariant &)> format;

    Input input = Input::Text;
    QStringList choices = {}; ///< in the words of the command line
    double lowest = 0;        ///< of numbers
    double highest = 0;
    QString unit = {}; ///< of numbers and letter sizes; lengths are in cm
};

struct Setting
{
    QString name; ///< on the command line
    QString key;  ///< in the store
    SettingType type;
    QString defaultText; ///< what holds when nothing is stored
    QString meaning;
};

/// All settings, in the order in which they are listed.
const std::vector<Setting> &hostSettings();

/// By its name on the command line; null when there is none.
const Setting *findSetting(const QString &name);

struct SettingValue
{
    const Setting *setting = nullptr;
    QVariant value; ///< invalid for a default that has a name and no value, such as "by unit"
};

/// From "NAME=VALUE". Throws HostError (ExitWrongUsage).
SettingValue parseSetting(const QString &assignment);
std::vector<SettingValue> parseSettings(const QStringList &assignments);

/// The stored value as text; the default when there is none.
QString currentText(const Setting &setting, const QSettings &store);

/// Why the stored value is none that the setting can have; empty when it is one or nothing is
/// stored.
QString findStoredFault(const Setting &setting, const QSettings &store);

/// Takes bad values out of the present store and tells each: what a format reads there by itself
/// would be obeyed as it stands.
void dropStoredFaults(const Console &console);

/// While it lives QSettings() is a store of its own: a copy of `file`, or of the user's settings
/// when that is empty, with `values` over it. Neither original is changed.
class SettingsOverlay
{
public:
    /// A bad value in the user's settings is told and left out. Throws HostError: a file that
    /// cannot be read, that holds no setting, or in which one has a bad value (ExitUnreadable); no
    /// place for the copy (ExitFailed).
    SettingsOverlay(
        const QString &file, const std::vector<SettingValue> &values, const Console &console);
    ~SettingsOverlay();
    SettingsOverlay(const SettingsOverlay &) = delete;
    SettingsOverlay &operator=(const SettingsOverlay &) = delete;

private:
    QTemporaryDir m_directory;
    QString m_userPath;
    QString m_systemPath;
    std::unique_ptr<Interruption::Cleanup> m_cleanup;
};

/// The settings of a verb: while it lives, QSettings(), KivLocale and the marker library have those
/// of the source.
class RunSettings
{
public:
    enum Use
    {
        ReadOnly,
        WorkOnCopy, ///< the run stores settings, too, which the user's own must not see
    };

    /// Throws as parseSetting() and SettingsOverlay do.
    RunSettings(const SettingsSource &source, Use use, const Console &console);

private:
    std::optional<SettingsOverlay> m_overlay;
};

/// Makes KivLocale use the units of the present store; bad values are told and passed over.
void applyConventions(const Console &console);

/// Gives the marker library its settings out of the present store; bad values are told and their
/// defaults taken.
void restoreMarkerSettings(const Console &console);

/// Puts those settings of the marker library into the present store that were changed since they
/// came from there.
void storeMarkerSettings();

/// Gives the library back what it had when they were restored or stored last.
void dropMarkerSettings();

} // namespace KivSystem

#endif
