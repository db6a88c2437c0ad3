#include "CommandLine.h"

#include "Console.h"

#include <CLI/CLI.hpp>

#include <QFileInfo>

#include <algorithm>
#include <iterator>
#include <ostream>

namespace KivSystem {

namespace {

// Text of an argument; one without a value is none.
QString textOf(const std::string &text, const std::string &names)
{
    if (text.empty()) {
        const std::string name = names.substr(names.find(',') + 1); // the longest stands last
        throw CLI::ValidationError(name + ": expected a value, found an empty one");
    }
    return QString::fromStdString(text);
}

CLI::Option *addText(
    CLI::App &app, const char *name, QString &target, const char *help, const char *value = "")
{
    return app
        .add_option_function<std::string>(
            name, [name, &target](const std::string &text) { target = textOf(text, name); }, help)
        ->type_name(value);
}

// An option that may be repeated and takes one value each time.
CLI::Option *addTexts(
    CLI::App &app, const char *name, QStringList &target, const char *help, const char *value)
{
    return app
        .add_option_function<std::vector<std::string>>(
            name,
            [name, &target](const std::vector<std::string> &texts) {
                for (const std::string &text : texts) {
                    target.append(textOf(text, name));
                }
            },
            help)
        ->allow_extra_args(false)
        ->type_name(value);
}

void addJson(CLI::App &app, bool &target)
{
    app.add_flag("--json", target, "Print JSON");
}

void addFormats(CLI::App &app, FormatsOptions &options)
{
    CLI::App *verb = app.add_subcommand("formats", "List the export formats");
    addJson(*verb, options.json);
}

void addSettingsSource(CLI::App &app, SettingsSource &source)
{
    addTexts(
        app, "--set", source.assignments, "A setting for this run; may be repeated", "NAME=VALUE");
    addText(app, "--settings", source.file, "Settings file in place of the user's own settings",
        "FILE");
}

void addInfo(CLI::App &app, InfoOptions &options)
{
    CLI::App *verb = app.add_subcommand("info", "Tell what a marker holds");
    addText(*verb, "MARKER", options.marker, "Marker file")->required();
    verb->add_flag("--cut", options.cut, "Tell of the cuts: lengths, plunges, holes");
    addSettingsSource(*verb, options.settings);
    addJson(*verb, options.json);
}

void addSvg(CLI::App &app, SvgVerbOptions &options)
{
    CLI::App *verb = app.add_subcommand("svg", "Print the cut document, for a browser to show");
    addText(*verb, "MARKER", options.marker, "Marker file")->required();
    verb->add_option("--fabric", options.fabric, "Number of the fabric, from 1")->type_name("N");
    verb->add_option("--for", options.cutter, "ansi, eastman or labels")
        ->check(CLI::IsMember({"ansi", "eastman", "labels"}))
        ->type_name("KIND");
    verb->add_option("--block", options.block, "Number of the block with a document of its own")
        ->type_name("N");
    addSettingsSource(*verb, options.settings);
}

void addImport(CLI::App &app, ImportOptions &options)
{
    CLI::App *verb = app.add_subcommand("import", "Make a marker of a nesting instance");
    addText(*verb, "INSTANCE", options.instance, "Nesting instance in JSON")->required();
    addText(*verb, "--layout", options.layout, "Layout of the instance in SVG: places the pieces",
        "FILE");
    verb->add_option("--unit", options.unit, "Centimetres for a unit of the instance")
        ->required()
        ->type_name("CM");
    addText(*verb, "-o,--output", options.output, "Marker file to write", "FILE")->required();
}

// An option that stands for a setting of this run.
void addSetting(
    CLI::App &app, const char *name, const char *setting, ExportOptions &options, const char *help)
{
    app.add_option_function<std::string>(
           name,
           [setting, &options](const std::string &text) {
               options.settings.assignments.append(
                   QString::fromLatin1(setting) + QLatin1Char('=') + QString::fromStdString(text));
           },
           help)
        ->type_name("TEXT");
}

void addExport(CLI::App &app, ExportOptions &options)
{
    CLI::App *verb = app.add_subcommand("export", "Write a marker in other formats");
    addText(*verb, "MARKER", options.marker, "Marker file")->required();
    CLI::Option *formats = addTexts(
        *verb, "--format", options.formats, "Name or tag of a format; may be repeated", "NAME");
    verb->add_flag("--all", options.all, "All formats")->excludes(formats);
    addText(*verb, "-o,--output", options.directory, "Directory to write to", "DIR")->required();
    addSettingsSource(*verb, options.settings);
    addText(*verb, "--fields", options.fields, "Fields of the text file, such as 0,3,7", "LIST");
    addSetting(*verb, "--field-separator", "field_separator", options,
        "Between two fields of the text file");
    addSetting(*verb, "--repeat-separator", "repeat_separator", options,
        "Between the entries of a repeated field of the text file");
    verb->add_flag_callback(
        "--one-line-per-size",
        [&options] {
            options.settings.assignments.append(QStringLiteral("one_line_per_size=true"));
        },
        "The text file has a line for each size");
    verb->add_option_function<std::string>(
            "--not-optimised",
            [&options](
                const std::string &answer) { options.exportNotOptimised = answer == "continue"; },
            "What to do with polygons that are not optimised: continue or stop (default)")
        ->check(CLI::IsMember({"continue", "stop"}))
        ->type_name("ANSWER");
    addJson(*verb, options.json);
}

void addRender(CLI::App &app, RenderOptions &options)
{
    CLI::App *verb = app.add_subcommand("render", "Draw a marker or an exported file");
    addText(*verb, "FILE", options.file, "Marker, or a file that was exported")->required();
    addText(*verb, "-o,--output", options.output, "Picture to write: .png or .svg", "PICTURE")
        ->required();
    addText(*verb, "--size", options.size, "Size in pixels, such as 1600x800", "WIDTHxHEIGHT");
    verb->add_option("--fabric", options.fabric, "Number of the marker's fabric, from 1")
        ->check(CLI::PositiveNumber)
        ->type_name("N");
    addSettingsSource(*verb, options.settings);
}

void addSettings(CLI::App &app, SettingsOptions &options)
{
    CLI::App *verb = app.add_subcommand("settings", "List the settings");
    addJson(*verb, options.json);
}

// What a definition cannot tell. Empty when all is well.
std::string findFault(const CLI::App &app, const ExportOptions &options)
{
    if (!app.got_subcommand("export")) {
        return {};
    }
    return options.formats.isEmpty() && !options.all ? "one of --format and --all is required"
                                                     : std::string();
}

// A name that stands for a file: one that is there, or that ends as those do that a window opens.
bool isFileName(const QString &argument)
{
    static const QStringList endings{QStringLiteral("mar"), QStringLiteral("cut"),
        QStringLiteral("dxf"), QStringLiteral("ai"), QStringLiteral("txt")};
    const QFileInfo info(argument);
    return info.isFile() || endings.contains(info.suffix().toLower());
}

bool isVerb(const CLI::App &app, const std::string &name)
{
    const std::vector<const CLI::App *> verbs =
        app.get_subcommands([](const CLI::App *) { return true; });
    return std::any_of(verbs.begin(), verbs.end(),
        [&name](const CLI::App *verb) { return verb->get_name() == name; });
}

// Whether the command line has files where a verb would stand.
bool asksForWindow(const CLI::App &app, int count, const char *const *arguments)
{
    for (int i = 1; i < count; ++i) {
        const std::string argument = arguments[i];
        if (argument == "--plugins") {
            ++i; // its directory
        } else if (argument == "--") {
            return i + 1 < count;
        } else if (argument.rfind("--plugins=", 0) != 0) {
            return argument.rfind('-', 0) != 0 && !isVerb(app, argument) &&
                   isFileName(QString::fromStdString(argument));
        }
    }
    return count < 2;
}

void parseFiles(CommandLine &result, int count, const char *const *arguments)
{
    CLI::App app("Opens files in the window", "kivhost");
    WindowOptions options;
    addText(app, "--plugins", result.plugins, "Directory of the plug-ins", "DIR");
    addTexts(app, "FILE", options.files, "Marker or exported file", "")->allow_extra_args();
    app.parse(count, arguments);
    result.verb = options;
}

} // namespace

bool hasDisplay()
{
    const char *const names[] = {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"};
    return std::any_of(std::begin(names), std::end(names),
        [](const char *name) { return !qEnvironmentVariableIsEmpty(name); });
}

CommandLine parseCommandLine(
    int count, const char *const *arguments, std::ostream &out, std::ostream &err)
{
    CommandLine result;
    FormatsOptions formats;
    InfoOptions info;
    ImportOptions import;
    ExportOptions exported;
    SettingsOptions settings;
    SvgVerbOptions svg;
    RenderOptions render;

    CLI::App app("Looks into markers and exports them", "kivhost");
    app.fallthrough(); // the general options may also stand behind the verb
    app.set_help_flag("-h,--help", "Print this help");
    app.set_version_flag("--version", "kivhost " KIV_VERSION);
    app.footer("Without a subcommand the window opens: kivhost [--plugins DIR] [FILE...]");
    addText(app, "--plugins", result.plugins, "Directory of the plug-ins", "DIR");
    addFormats(app, formats);
    addInfo(app, info);
    addImport(app, import);
    addExport(app, exported);
    addSettings(app, settings);
    addSvg(app, svg);
    addRender(app, render);

    if (count < 2 && !hasDisplay()) {
        err << app.help();
        result.exitStatus = ExitWrongUsage;
        return result;
    }
    try {
        for (int argument = 1; argument < count; ++argument) {
            if (QString::fromUtf8(arguments[argument]).toUtf8() != arguments[argument]) {
                throw CLI::ValidationError(
                    "argument " + std::to_string(argument) + " is not UTF-8 text");
            }
        }
        if (asksForWindow(app, count, arguments)) {
            if (!hasDisplay()) {
                throw CLI::ValidationError("there is no display to open a window on");
            }
            parseFiles(result, count, arguments);
            return result;
        }
        app.require_subcommand(1);
        app.parse(count, arguments);
        const std::string fault = findFault(app, exported);
        if (!fault.empty()) {
            throw CLI::ValidationError(fault);
        }
    } catch (const CLI::Success &success) { // help or version, as asked for
        result.exitStatus = app.exit(success, out, err);
        return result;
    } catch (const CLI::ParseError &error) {
        err << "kivhost: " << error.what() << "\nRun with --help for more information.\n";
        result.exitStatus = ExitWrongUsage;
        return result;
    }

    if (app.got_subcommand("formats")) {
        result.verb = formats;
    } else if (app.got_subcommand("info")) {
        result.verb = info;
    } else if (app.got_subcommand("import")) {
        result.verb = import;
    } else if (app.got_subcommand("export")) {
        result.verb = exported;
    } else if (app.got_subcommand("svg")) {
        result.verb = svg;
    } else if (app.got_subcommand("render")) {
        result.verb = render;
    } else {
        result.verb = settings;
    }
    return result;
}

} // namespace KivSystem
