#include "HostSettings.h"

#include "Console.h"
#include "KivCore/Conventions.h"
#include "KivCore/Locale.h"
#include "KivMarker/MarkerSettings.h"
#include "KivMarker/Text.h"

#include <QColor>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QRegularExpression>
#include <QSettings>

#include <algorithm>
#include <optional>

namespace KivSystem {

namespace {

constexpr int kTextFields = 22; // fields of the text export, numbered from 0

// A word out of a list, in small letters.
SettingType choice(const QStringList &words)
{
    return {QStringLiteral("one of %1").arg(words.join(QStringLiteral(", "))),
        [words](const QString &text) {
            return words.contains(text.toLower()) ? QVariant(text.toLower()) : QVariant();
        },
        [](const QVariant &value) { return value.toString(); }, SettingType::Input::Choice, words};
}

QString withUnit(const QString &meaning, const QString &unit)
{
    return unit.isEmpty() ? meaning : QStringLiteral("%1 (%2)").arg(meaning, unit);
}

// Stored as a text, as it comes out of a store file again.
SettingType wholeNumber(int lowest, int highest, const QString &unit = QString())
{
    const QString range = QStringLiteral("a whole number from %1 to %2").arg(lowest).arg(highest);
    return {withUnit(range, unit),
        [lowest, highest](const QString &text) {
            bool isNumber = false;
            const int number = text.toInt(&isNumber);
            return isNumber && number >= lowest && number <= highest
                       ? QVariant(QString::number(number))
                       : QVariant();
        },
        [](const QVariant &value) { return value.toString(); }, SettingType::Input::WholeNumber, {},
        double(lowest), double(highest), unit};
}

constexpr double kSmallestFactor = 0.1; // of a drawing: the panel's

// One of the sizes that letters are fitted with, stored as a text as well.
SettingType letterSize()
{
    QStringList sizes;
    for (const short size : kLetterSizeLadder) {
        sizes << QString::number(size);
    }
    return {withUnit(QStringLiteral("one of %1").arg(sizes.join(QStringLiteral(", "))),
                QStringLiteral("points")),
        [sizes](const QString &text) { return sizes.contains(text) ? QVariant(text) : QVariant(); },
        [](const QVariant &value) { return value.toString(); }, SettingType::Input::Choice, sizes,
        kLetterSizeLadder.front(), kLetterSizeLadder.back(), QStringLiteral("points")};
}

// A number with a point as its decimal sign, whatever the locale.
SettingType number(double lowest, double highest, const QString &unit)
{
    const QString range = QStringLiteral("a number from %1 to %2").arg(lowest).arg(highest);
    return {withUnit(range, unit),
        [lowest, highest](const QString &text) {
            bool isNumber = false;
            const double value = text.toDouble(&isNumber);
            return isNumber && value >= lowest && value <= highest ? QVariant(value) : QVariant();
        },
        [](const QVariant &value) { return value.toString(); }, SettingType::Input::Number, {},
        lowest, highest, unit};
}

SettingType flag()
{
    return {QStringLiteral("true or false"),
        [](const QString &text) {
            return text == QLatin1String("true") || text == QLatin1String("false")
                       ? QVariant(text == QLatin1String("true"))
                       : QVariant();
        },
        // A store file keeps a flag as a word or as a number.
        [](const QVariant &value) {
            const QString text = value.toString();
            return text == QLatin1String("1")   ? QStringLiteral("true")
                   : text == QLatin1String("0") ? QStringLiteral("false")
                                                : text;
        },
        SettingType::Input::Flag};
}

// Six digits and no name: a colour reads the same wherever it is shown.
SettingType color()
{
    return {QStringLiteral("a colour as #rrggbb"),
        [](const QString &text) {
            static const QRegularExpression digits(QStringLiteral("\\A#[0-9A-Fa-f]{6}\\z"));
            return digits.match(text).hasMatch() ? QVariant(text.toLower()) : QVariant();
        },
        [](const QVariant &value) { return value.toString(); }, SettingType::Input::Color};
}

std::optional<char> fromHexadecimal(const QString &digits)
{
    bool isNumber = false;
    const int code = digits.toInt(&isNumber, 16);
    if (digits.size() != 2 || !isNumber || code < 0) {
        return std::nullopt;
    }
    return static_cast<char>(code);
}

// Text with the escapes \t, \n, \r, \\ and \xHH; invalid for any other escape, and for what is no
// text then.
QVariant bytesFromText(const QString &text)
{
    static const QString letters = QStringLiteral("tnr\\");
    QByteArray bytes;
    for (int at = 0; at < text.size(); ++at) {
        if (text[at] != QLatin1Char('\\')) {
            const int units = text[at].isHighSurrogate() ? 2 : 1;
            bytes += text.midRef(at, units).toUtf8();
            at += units - 1;
            continue;
        }
        const int letter = ++at < text.size() ? letters.indexOf(text[at]) : -1;
        if (letter >= 0) {
            bytes += "\t\n\r\\"[letter];
        } else if (at < text.size() && text[at] == QLatin1Char('x')) {
            const auto byte = fromHexadecimal(text.mid(at + 1, 2));
            if (!byte) {
                return {};
            }
            bytes += *byte;
            at += 2;
        } else {
            return {};
        }
    }
    // The panel holds separators as text: what is no text, or stands behind a zero byte, is lost.
    const bool isText = QString::fromUtf8(bytes).toUtf8() == bytes && !bytes.contains('\0');
    return isText ? QVariant(bytes) : QVariant();
}

QString bytesToText(const QVariant &value)
{
    QString text;
    for (const char byte : value.toByteArray()) {
        const auto code = static_cast<unsigned char>(byte);
        if (byte == '\t') {
            text += QStringLiteral("\\t");
        } else if (byte == '\n') {
            text += QStringLiteral("\\n");
        } else if (byte == '\r') {
            text += QStringLiteral("\\r");
        } else if (byte == '\\') {
            text += QStringLiteral("\\\\");
        } else if (code < 0x20 || code >= 0x7F) {
            text += QStringLiteral("\\x%1").arg(int(code), 2, 16, QLatin1Char('0'));
        } else {
            text += QLatin1Char(byte);
        }
    }
    return text;
}

SettingType separator()
{
    return {QStringLiteral("a text, in which \\t, \\n, \\r, \\\\ and \\xHH stand for bytes"),
        bytesFromText, bytesToText};
}

SettingType fieldList()
{
    return {QStringLiteral("field numbers from 0 to %1 with commas between").arg(kTextFields - 1),
        [](const QString &text) {
            const QStringList numbers = text.split(QLatin1Char(','));
            QStringList fields;
            for (const QString &number : numbers) {
                bool isNumber = false;
                const int field = number.toInt(&isNumber);
                if (!isNumber || field < 0 || field >= kTextFields) {
                    return QVariant();
                }
                fields.append(QString::number(field));
            }
            return QVariant(fields);
        },
        [](const QVariant &value) { return value.toStringList().join(QLatin1Char(',')); }};
}

void copySettings(const QSettings &from, QSettings &to)
{
    const QStringList keys = from.allKeys();
    for (const QString &key : keys) {
        to.setValue(key, from.value(key));
    }
}

// The directory under which the store of a scope lies now, as QSettings::setPath takes it.
QString storePath(QSettings::Scope scope)
{
    const QSettings store(QSettings::IniFormat, scope, QCoreApplication::organizationName(),
        QCoreApplication::applicationName());
    QDir directory = QFileInfo(store.fileName()).absoluteDir();
    directory.cdUp();
    return directory.path();
}

void setStorePaths(const QString &user, const QString &system)
{
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, user);
    QSettings::setPath(QSettings::IniFormat, QSettings::SystemScope, system);
}

QString valueFault(const Setting &setting, const QString &found)
{
    return QStringLiteral("setting %1: found \"%2\", expected %3")
        .arg(setting.name, found, setting.type.meaning);
}

void checkStore(const QSettings &store, const QString &file)
{
    if (store.status() != QSettings::NoError) {
        throw HostError(ExitUnreadable, QStringLiteral("%1: is not a settings file").arg(file));
    }
    bool isAnyKnown = false;
    for (const Setting &setting : hostSettings()) {
        isAnyKnown = isAnyKnown || store.contains(setting.key);
        const QString fault = findStoredFault(setting, store);
        if (!fault.isEmpty()) {
            throw HostError(ExitUnreadable, QStringLiteral("%1: %2").arg(file, fault));
        }
    }
    if (!isAnyKnown && QFileInfo(file).size() > 0) {
        throw HostError(
            ExitUnreadable, QStringLiteral("%1: holds no setting of this program").arg(file));
    }
}

// The field dialog passes over what is no field in the user's own list.
constexpr char kFieldListKey[] = "marker_export_list";

// `file` is where the values come from.
void dropFaults(QSettings &store, const QString &file, const Console &console)
{
    for (const Setting &setting : hostSettings()) {
        const QString fault = findStoredFault(setting, store);
        if (!fault.isEmpty() && setting.key != QLatin1String(kFieldListKey)) {
            console.message(QStringLiteral("%1: %2").arg(file, fault));
            store.remove(setting.key);
        }
    }
}

// Language, units, and what formats read by themselves.
std::vector<Setting> generalSettings()
{
    const QStringList languages = {
        QStringLiteral("system"), QStringLiteral("en"), QStringLiteral("de"), QStringLiteral("fr")};
    const QStringList units = {QStringLiteral("cm"), QStringLiteral("mm"), QStringLiteral("in")};
    return {
        {QStringLiteral("language"), QStringLiteral("window/language"), choice(languages),
            QStringLiteral("system"), QStringLiteral("language of panels and reports")},
        {QStringLiteral("unit"), QStringLiteral("units/length"), choice(units),
            QStringLiteral("cm"), QStringLiteral("unit of lengths")},
        {QStringLiteral("ruler_x"), QStringLiteral("units/rulerX"), choice(units),
            QStringLiteral("as unit"),
            QStringLiteral("unit along the fabric, in rulers and exported texts")},
        {QStringLiteral("ruler_y"), QStringLiteral("units/rulerY"), choice(units),
            QStringLiteral("as unit"),
            QStringLiteral("unit across the fabric, in rulers and exported texts")},
        {QStringLiteral("decimals"), QStringLiteral("units/decimals"),
            wholeNumber(0, KivConventions::kMaximumDecimals), QStringLiteral("by unit"),
            QStringLiteral("decimals of all numbers that are shown")},
        {QStringLiteral("field_separator"), QStringLiteral("text_export/option/_0"), separator(),
            QStringLiteral("\\t"), QStringLiteral("between two fields of the text file")},
        {QStringLiteral("repeat_separator"), QStringLiteral("text_export/option/_1"), separator(),
            QStringLiteral("\\x1d"), QStringLiteral("between the entries of a repeated field")},
        {QStringLiteral("one_line_per_size"), QStringLiteral("text_export/option/_2"), flag(),
            QStringLiteral("false"), QStringLiteral("the text file has a line for each size")},
        {QStringLiteral("fields"), QString::fromLatin1(kFieldListKey), fieldList(),
            QStringLiteral("all"), QStringLiteral("fields of the text file, in their order")},
        {QStringLiteral("symbols_letterSize"), QStringLiteral("symbols_letterSize"), letterSize(),
            QString::number(CDbTextObject::DefaultLetterSize),
            QStringLiteral("letter size of texts and guide lines in drawings")},
        {QStringLiteral("Illustrator_export_factor"), QStringLiteral("Illustrator_export_factor"),
            number(kSmallestFactor, 1, QString()), QStringLiteral("1"),
            QStringLiteral("scale of drawings, 1 for full size")},
    };
}

// "plot_pieceName" is kept as plot/pieceName; the cut settings have no such prefix.
QString storeKey(const QString &name)
{
    const int prefix = name.indexOf(QLatin1Char('_'));
    return prefix < 0 ? QStringLiteral("cut/") + name
                      : name.left(prefix) + QLatin1Char('/') + name.mid(prefix + 1);
}

SettingType typeOf(const MarkerSettingDescription &description)
{
    using Kind = MarkerSettingDescription::Kind;
    if (description.kind == Kind::Flag) {
        return flag();
    }
    if (description.kind == Kind::Color) {
        return color();
    }
    if (description.kind == Kind::Points) {
        return letterSize();
    }
    return description.isWhole()
               ? wholeNumber(static_cast<int>(description.lowest),
                     static_cast<int>(description.highest), description.unit())
               : number(description.lowest, description.highest, description.unit());
}

QString textOf(const MarkerSettingDescription &description, double value)
{
    using Kind = MarkerSettingDescription::Kind;
    if (description.kind == Kind::Flag) {
        return value != 0 ? QStringLiteral("true") : QStringLiteral("false");
    }
    return description.kind == Kind::Color
               ? QColor(static_cast<QRgb>(value)).name()
               : QString::number(value, 'g', QLocale::FloatingPointShortest);
}

// The number that a parsed value stands for.
double numberOf(const MarkerSettingDescription &description, const QVariant &value)
{
    return description.kind == MarkerSettingDescription::Kind::Color
               ? QColor(value.toString()).rgb() & RGB_MASK
               : value.toDouble();
}

// A setting as the marker library, which obeys it, describes it.
Setting markerSetting(const MarkerSettingDescription &description)
{
    const QString name = QString::fromLatin1(description.name);
    const SettingType type = typeOf(description);
    const double value = description.valueIn(MarkerSettings());
    return {name, storeKey(name), type, textOf(description, value),
        QString::fromLatin1(description.meaning)};
}

std::vector<Setting> allSettings()
{
    std::vector<Setting> settings = generalSettings();
    for (const MarkerSettingDescription &description : markerSettingDescriptions()) {
        settings.push_back(markerSetting(description));
    }
    return settings;
}

} // namespace

const std::vector<Setting> &hostSettings()
{
    static const std::vector<Setting> settings = allSettings();
    return settings;
}

const Setting *findSetting(const QString &name)
{
    const std::vector<Setting> &settings = hostSettings();
    const auto found = std::find_if(settings.begin(), settings.end(),
        [&name](const Setting &setting) { return setting.name == name; });
    return found != settings.end() ? &*found : nullptr;
}

SettingValue parseSetting(const QString &assignment)
{
    const int equals = assignment.indexOf(QLatin1Char('='));
    if (equals < 1) {
        throw HostError(
            ExitWrongUsage, QStringLiteral("setting \"%1\": expected NAME=VALUE").arg(assignment));
    }
    const QString name = assignment.left(equals);
    const QString text = assignment.mid(equals + 1);
    const Setting *setting = findSetting(name);
    if (setting == nullptr) {
        throw HostError(ExitWrongUsage,
            QStringLiteral("there is no setting \"%1\"; \"kivhost settings\" lists them")
                .arg(name));
    }
    const QVariant value = setting->type.parse(text);
    if (!value.isValid() && text != setting->defaultText) {
        throw HostError(ExitWrongUsage, valueFault(*setting, text));
    }
    return {setting, value};
}

std::vector<SettingValue> parseSettings(const QStringList &assignments)
{
    std::vector<SettingValue> values;
    for (const QString &assignment : assignments) {
        values.push_back(parseSetting(assignment));
    }
    return values;
}

QString currentText(const Setting &setting, const QSettings &store)
{
    return store.contains(setting.key) ? setting.type.format(store.value(setting.key))
                                       : setting.defaultText;
}

QString findStoredFault(const Setting &setting, const QSettings &store)
{
    if (!store.contains(setting.key)) {
        return QString();
    }
    const QString text = currentText(setting, store);
    const bool isEmptyList = text.isEmpty() && setting.key == QLatin1String(kFieldListKey);
    return isEmptyList || setting.type.parse(text).isValid() ? QString()
                                                             : valueFault(setting, text);
}

void dropStoredFaults(const Console &console)
{
    QSettings store;
    dropFaults(store, store.fileName(), console);
}

SettingsOverlay::SettingsOverlay(
    const QString &file, const std::vector<SettingValue> &values, const Console &console)
    : m_userPath(storePath(QSettings::UserScope))
    , m_systemPath(storePath(QSettings::SystemScope))
{
    if (!m_directory.isValid()) {
        throw HostError(ExitFailed, QStringLiteral("%1: a copy of the settings cannot be made: %2")
                                        .arg(QDir::tempPath(), m_directory.errorString()));
    }
    m_cleanup = std::make_unique<Interruption::Cleanup>(
        [this] { QDir(m_directory.path()).removeRecursively(); });

    QSettings copy(m_directory.filePath(QStringLiteral("%1/%2.ini")
                                            .arg(QCoreApplication::organizationName(),
                                                QCoreApplication::applicationName())),
        QSettings::IniFormat);
    if (file.isEmpty()) {
        const QSettings store;
        copySettings(store, copy);
        dropFaults(copy, store.fileName(), console);
    } else {
        requireReadableFile(file);
        const QSettings store(file, QSettings::IniFormat);
        checkStore(store, file);
        copySettings(store, copy);
    }
    for (const SettingValue &value : values) {
        if (value.value.isValid()) {
            copy.setValue(value.setting->key, value.value);
        } else {
            copy.remove(value.setting->key);
        }
    }
    copy.sync();
    if (copy.status() != QSettings::NoError) {
        throw HostError(ExitFailed,
            QStringLiteral("%1: a copy of the settings cannot be written").arg(copy.fileName()));
    }
    // What the whole machine has set is in the copy of the user's settings, or is not wanted.
    setStorePaths(m_directory.path(), m_directory.filePath(QStringLiteral("system")));
}

SettingsOverlay::~SettingsOverlay()
{
    setStorePaths(m_userPath, m_systemPath);
}

// What the library was given from the store, or has given to it, last.
static MarkerSettings &knownSettings()
{
    static MarkerSettings known;
    return known;
}

void restoreMarkerSettings(const Console &console)
{
    const QSettings store;
    MarkerSettings values;
    for (const MarkerSettingDescription &description : markerSettingDescriptions()) {
        const Setting setting = markerSetting(description);
        const QString text = currentText(setting, store);
        const QVariant value = setting.type.parse(text);
        if (!value.isValid() || !description.setValueIn(values, numberOf(description, value))) {
            console.message(valueFault(setting, text));
        }
    }
    values.apply();
    knownSettings() = values;
}

void dropMarkerSettings()
{
    knownSettings().apply();
}

void storeMarkerSettings()
{
    QSettings store;
    MarkerSettings values = MarkerSettings::current();
    for (const MarkerSettingDescription &description : markerSettingDescriptions()) {
        const Setting setting = markerSetting(description);
        const double value = description.valueIn(values);
        // Another program may have stored something since: that stays.
        const double known = description.valueIn(knownSettings());
        if (value == known) {
            continue;
        }
        const QVariant kept = setting.type.parse(textOf(description, value));
        if (kept.isValid()) {
            store.setValue(setting.key, kept);
        } else { // out of its range, from a field that nobody checks while it is disabled
            description.write(values, known);
        }
    }
    values.apply();
    knownSettings() = values;
}

void applyConventions(const Console &console)
{
    QStringList problems;
    KivLocale::setApplicationConventions(conventionsFromSettings(QSettings(), &problems));
    for (const QString &problem : qAsConst(problems)) {
        console.message(problem);
    }
}

RunSettings::RunSettings(const SettingsSource &source, Use use, const Console &console)
{
    const std::vector<SettingValue> values = parseSettings(source.assignments);
    if (use == WorkOnCopy || !source.file.isEmpty() || !values.empty()) {
        m_overlay.emplace(source.file, values, console);
    }
    applyConventions(console);
    restoreMarkerSettings(console);
}

} // namespace KivSystem
