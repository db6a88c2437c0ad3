// What the tests of the format "Illustrator(TM)" share.

#ifndef KIVTESTS_KIVPLOTOUT_ILLUSTRATORSUPPORT_H
#define KIVTESTS_KIVPLOTOUT_ILLUSTRATORSUPPORT_H

#include "IllustratorPrimitives.h"

#include "KivMarker/GeneralPlotOptions.h"
#include "KivMarker/MarkerOptions.h"

#include <QSettings>
#include <QString>
#include <QStringList>
#include <QTextStream>

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace KivSystem {
namespace KivIllustrator {

/// Leaves the scale, the options and the settings as it found them.
class Illustrator : public testing::Test
{
protected:
    ~Illustrator() override
    {
        setScale(1);
        CDbGeneralPlotOptions::mGeneralPlotOptions = CDbGeneralPlotOptions();
        CDbMarkerOptions::mDefaultOptions.setValues(MarkerPlotOptions());
        QSettings().clear();
    }

    CDbGeneralPlotOptions &options = CDbGeneralPlotOptions::mGeneralPlotOptions;
};

/// The lines that `write(QTextStream &)` puts down.
template <class Write>
QStringList linesOf(Write write)
{
    QString text;
    QTextStream out(&text);
    write(out);
    out.flush();
    EXPECT_TRUE(text.isEmpty() || text.endsWith('\n'));
    text.chop(1);
    return text.isEmpty() ? QStringList() : text.split('\n');
}

/// The same in one row, path lines with their coordinates back in hundredths of a centimetre and
/// with a comma: "u 0,0m 100,50L S U".
template <class Write>
std::string drawingOf(Write write)
{
    constexpr double kPointsPerCm = 28.35;
    QStringList words;
    const QStringList lines = linesOf(write);
    for (const QString &line : lines) {
        const QStringList fields = line.split(' ');
        if (fields.size() != 3 || (fields[2] != "m" && fields[2] != "L")) {
            words << line;
            continue;
        }
        const auto hundredths = [&](int field) {
            return std::lround(fields[field].toDouble() / kPointsPerCm * 100);
        };
        words << QStringLiteral("%1,%2%3").arg(hundredths(0)).arg(hundredths(1)).arg(fields[2]);
    }
    return words.join(' ').toStdString();
}

} // namespace KivIllustrator
} // namespace KivSystem

#endif
