// main() of the test programs: a QApplication on the offscreen platform, the C locale, UTF-8 as
// the local encoding, and a settings store that is thrown away.

#include <QApplication>
#include <QLocale>
#include <QSettings>
#include <QTemporaryDir>
#include <QTextCodec>

#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");

    const QTemporaryDir settings;
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
    QCoreApplication::setOrganizationName(QStringLiteral("KivTests"));
    QCoreApplication::setApplicationName(QStringLiteral("tests"));

    const QApplication application(argc, argv);
    QLocale::setDefault(QLocale::c());
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    return RUN_ALL_TESTS();
}
