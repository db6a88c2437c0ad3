#include "Console.h"
#include "HostSettings.h"
#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"
#include "Verbs.h"
#include "Viewer/MarkerPicture.h"
#include "Viewer/PicturePainter.h"
#include "Viewer/ViewedFile.h"

#include <QBuffer>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>

#include <algorithm>
#include <cmath>

namespace KivSystem {

namespace {

constexpr int kMostPixels = 20000; // of a side
constexpr int kUsualWidth = 1600;

[[noreturn]] void refuse(const QString &sentence)
{
    throw HostError(ExitWrongUsage, sentence);
}

// Empty when none was asked for.
QSize askedSize(const QString &text)
{
    if (text.isEmpty()) {
        return {};
    }
    static const QRegularExpression form(QStringLiteral("^(\\d{1,5})x(\\d{1,5})$"));
    const QRegularExpressionMatch match = form.match(text);
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    if (size.isEmpty() || std::max(size.width(), size.height()) > kMostPixels) {
        refuse(QStringLiteral("--size: expected WIDTHxHEIGHT in pixels, %1 each at the most, as "
                              "in 1600x800; found \"%2\"")
                   .arg(kMostPixels)
                   .arg(text));
    }
    return size;
}

// As wide as usual, and as high as the picture asks for within reason.
QSize usualSize(const Picture &picture)
{
    const QRectF bounds = picture.bounds();
    const double share = bounds.width() > 0 ? bounds.height() / bounds.width() : 1;
    return {kUsualWidth, static_cast<int>(std::lround(kUsualWidth * qBound(0.2, share, 1.2)))};
}

bool isMarker(const QString &path)
{
    return QFileInfo(path).suffix().compare(QLatin1String("mar"), Qt::CaseInsensitive) == 0;
}

Picture markerPicture(const RenderOptions &options)
{
    const std::unique_ptr<DocumentMak> document = loadMarker(options.file);
    const CDbMarkerDrawing &drawing = *document->drawing();
    const int number = options.fabric == 0 ? drawing.currentFabric : options.fabric;
    if (number < 1 || number > drawing.getFabricsQty()) {
        refuse(QStringLiteral("there is no fabric %1; the marker has %2")
                   .arg(number)
                   .arg(drawing.getFabricsQty()));
    }
    SceneOptions scene;
    scene.fill = SceneOptions::ByColour;
    return pictureOf(drawing, *drawing.getFabric(static_cast<short>(number - 1)), scene);
}

QByteArray encoded(const Picture &picture, const QSize &size, bool isSvg)
{
    if (isSvg) {
        return svgOf(picture, size);
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!imageOf(picture, size).save(&buffer, "PNG")) {
        throw HostError(ExitFailed, QStringLiteral("the picture cannot be made a PNG file"));
    }
    return bytes;
}

} // namespace

int renderPicture(const RenderOptions &options, const Console &console)
{
    const QString suffix = QFileInfo(options.output).suffix().toLower();
    if (suffix != QLatin1String("png") && suffix != QLatin1String("svg")) {
        refuse(QStringLiteral("%1: expected a name that ends in .png or .svg").arg(options.output));
    }
    if (options.fabric != 0 && !isMarker(options.file)) {
        refuse(QStringLiteral("--fabric: %1 is no marker").arg(options.file));
    }
    const QSize asked = askedSize(options.size);
    const RunSettings settings(options.settings, RunSettings::ReadOnly, console);
    const Picture picture =
        isMarker(options.file) ? markerPicture(options) : pictureOf(readExportedFile(options.file));
    if (picture.bounds().isNull()) {
        throw HostError(
            ExitFailed, QStringLiteral("%1: there is nothing to draw").arg(options.file));
    }
    const QByteArray bytes = encoded(
        picture, asked.isEmpty() ? usualSize(picture) : asked, suffix == QLatin1String("svg"));
    QSaveFile file(options.output);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        throw HostError(ExitFailed,
            QStringLiteral("%1: cannot be written: %2").arg(options.output, file.errorString()));
    }
    return ExitDone;
}

} // namespace KivSystem
