// kivhost in the language of its user: what the environment asks for, and what a report says then.

#include "HostTestSupport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QProcess>

namespace KivSystem {
namespace {

using Variables = QMap<QString, QString>;

const QString kPlugins = QStringLiteral(KIV_BINARY_DIR "/bin/plugins");

class TranslationTest : public testing::Test
{
protected:
    /// Runs kivhost with no variables for its language but these; it is to succeed.
    QString run(const QStringList &arguments, const Variables &variables)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const QString &name : environment.keys()) {
            if (name.startsWith("LC_") || name.startsWith("LANG")) {
                environment.remove(name);
            }
        }
        environment.insert("HOME", folder.path());
        environment.insert("XDG_CONFIG_HOME", folder.path());
        for (auto variable = variables.begin(); variable != variables.end(); ++variable) {
            environment.insert(variable.key(), variable.value());
        }
        QProcess program;
        program.setProcessEnvironment(environment);
        program.start(KIV_BINARY_DIR "/bin/kivhost", arguments);
        EXPECT_TRUE(program.waitForFinished(60000)) << program.errorString();
        err = QString::fromUtf8(program.readAllStandardError());
        EXPECT_EQ(program.exitCode(), 0) << err;
        return QString::fromUtf8(program.readAllStandardOutput());
    }

    /// The lines of the sample's report, field by field.
    QList<QStringList> report(const QString &locale, const QStringList &format)
    {
        run(QStringList{"export", KIV_SOURCE_DIR "/Samples/trousers.mar", "-o", folder.path("out"),
                "--format"} +
                format,
            {{"LC_ALL", locale}});
        EXPECT_EQ(err, "");
        const QByteArray bytes = folder.read("out/" + format[0] + "/trousers.txt");
        QList<QStringList> lines;
        for (const QString &line : QString::fromUtf8(bytes).split('\n', Qt::SkipEmptyParts)) {
            lines.append(line.split('\t'));
        }
        return lines;
    }

    /// The first filter of the first format, by which one sees the language.
    QString filter(const Variables &variables, const QString &plugins = kPlugins)
    {
        const QString text = run({"formats", "--json", "--plugins", plugins}, variables);
        EXPECT_EQ(err, "");
        const QJsonObject format = QJsonDocument::fromJson(text.toUtf8())[0].toObject();
        EXPECT_EQ(format["name"], "KIV System Manager (txt)"); // a key, the same in all languages
        return format["filters"].toArray()[0].toString();
    }

    Folder folder;
    QString err;
};

TEST_F(TranslationTest, AReportHasWordsAndDecimalSignOfTheUsersLanguageAndNothingElseChanges)
{
    const struct
    {
        QString locale;
        QMap<QString, QString> words;
    } cases[] = {
        {"de_DE.UTF-8", {{"Fold on Bottom", "Bruch unten"}, {"Plain", "Offenbreit"}, {"Yes", "Ja"},
                            {"No", "Nein"}}},
        {"fr_FR.UTF-8",
            {{"Fold on Bottom", "Pli en bas"}, {"Plain", QString::fromUtf8("\u00C0 plat")},
                {"Yes", "Oui"}, {"No", "Non"}}},
    };
    const QList<QStringList> english = report("C", {"kiv_txt"});
    ASSERT_EQ(english.size(), 4);
    for (const auto &entry : cases) {
        QList<QStringList> expected = english;
        for (QStringList &line : expected) {
            ASSERT_EQ(line.size(), 22);
            for (const int field : {9, 10}) {
                ASSERT_TRUE(entry.words.contains(line[field])) << line[field];
                line[field] = entry.words[line[field]];
            }
            for (const int field : {11, 12, 14, 15, 16}) {
                ASSERT_TRUE(line[field].contains('.')) << line[field];
                line[field].replace('.', ',');
            }
        }
        EXPECT_EQ(report(entry.locale, {"kiv_txt"}), expected) << entry.locale;
    }
}

TEST_F(TranslationTest, AWidthWithoutALayerIsNoneInTheUsersLanguage)
{
    const QMap<QString, QString> none{
        {"C", "None"}, {"de_DE.UTF-8", "Keine"}, {"fr_FR.UTF-8", "Aucune"}};
    for (auto entry = none.begin(); entry != none.end(); ++entry) {
        const QList<QStringList> expected{
            {"Twill sand", entry.value()}, {"Check lining", entry.value()}};
        EXPECT_EQ(report(entry.key(), {"txt", "--fields", "8,12"}), expected) << entry.key();
    }
}

TEST_F(TranslationTest, TheEnvironmentChoosesTheLanguageAndEnglishIsOne)
{
    const QString english = "Text File (*.txt)";
    const QString german = "Textdatei (*.txt)";
    const QString french = "Fichier texte (*.txt)";
    const struct
    {
        Variables variables;
        QString filter;
    } cases[] = {
        {{}, english},
        {{{"LC_ALL", "C"}}, english},
        {{{"LC_ALL", "C.UTF-8"}}, english},
        {{{"LC_ALL", "C"}, {"LANGUAGE", "de:fr"}}, english}, // as every program has it
        {{{"LC_ALL", "C"}, {"LANG", "de_DE.UTF-8"}}, english},
        {{{"LC_ALL", "en_US.UTF-8"}}, english},
        {{{"LC_ALL", "es_ES.UTF-8"}}, english}, // there is no Spanish
        {{{"LC_ALL", "de_DE.UTF-8"}}, german},
        {{{"LANG", "de_AT.UTF-8"}}, german},
        {{{"LANG", "fr_CA.UTF-8"}}, french},
        {{{"LANG", "en_US.UTF-8"}, {"LC_MESSAGES", "fr_FR.UTF-8"}}, french},
        {{{"LANG", "es_ES.UTF-8"}, {"LANGUAGE", "es:fr:de"}}, french},
        {{{"LANG", "en_GB.UTF-8"}, {"LANGUAGE", "en_GB:en:de"}}, english},
    };
    for (const auto &entry : cases) {
        EXPECT_EQ(filter(entry.variables), entry.filter)
            << entry.variables.keys().join(' ') << " = " << entry.variables.values().join(' ');
    }
}

TEST_F(TranslationTest, TheUsersChoiceGoesBeforeTheEnvironment)
{
    const auto word = [&](const QStringList &more) {
        return report("fr_FR.UTF-8", QStringList{"txt", "--fields", "12"} + more).value(0);
    };
    const QStringList french{"Aucune"};
    const QStringList german{"Keine"};
    EXPECT_EQ(word({}), french);
    EXPECT_EQ(word({"--set", "language=de"}), german);
    folder.write("KivSystem/kivhost.ini", "[window]\nlanguage=de\n");
    EXPECT_EQ(word({}), german);
    EXPECT_EQ(word({"--set", "language=system"}), french);
}

TEST_F(TranslationTest, APluginWithoutTranslationsSpeaksEnglish)
{
    ASSERT_TRUE(QFile::link(kPlugins + "/libKivPlotOut.so", folder.path("libKivPlotOut.so")));
    EXPECT_EQ(filter({{"LC_ALL", "de_DE.UTF-8"}}, folder.path()), "Text File (*.txt)");
}

TEST_F(TranslationTest, AFaultInTheSettingsIsToldInTheUsersLanguage)
{
    folder.write("small.mar", smallMarker());
    folder.write("KivSystem/kivhost.ini", "[units]\nlength=ell\n");
    run({"info", folder.path("small.mar")}, {{"LC_ALL", "de_DE.UTF-8"}});
    EXPECT_EQ(err, QString::fromUtf8("kivhost: Die Einstellung units/length hat den Wert "
                                     "\u201Eell\u201C; erwartet wird: cm, mm oder in.\n"));
}

} // namespace
} // namespace KivSystem
