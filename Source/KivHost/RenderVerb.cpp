#include "Console.h"
#include "HostSettings.h"
#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"
#include "Verbs.h"
#include "Viewer/PicturePainter.h"
#include "Viewer/ViewedFile.h"
#include "Window/MarkerScene.h"

#include <QBuffer>
#include <QFileInfo>
#include <QPainter>
#include <QRegularExpression>
#include <QSaveFile>
#include <QSvgGenerator>

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
QSize sizeFor(const QRectF &bounds, const QSize &asked)
{
    if (!asked.isEmpty()) {
        return asked;
    }
    const double share = bounds.width() > 0 ? bounds.height() / bounds.width() : 1;
    return {kUsualWidth, static_cast<int>(std::lround(kUsualWidth * qBound(0.2, share, 1.2)))};
}

bool isMarker(const QString &path)
{
    return QFileInfo(path).suffix().compare(QLatin1String("mar"), Qt::CaseInsensitive) == 0;
}

[[noreturn]] void refuseEmpty(const RenderOptions &options)
{
    throw HostError(ExitFailed, QStringLiteral("%1: there is nothing to draw").arg(options.file));
}

QByteArray pngOf(const QImage &image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "PNG")) {
        throw HostError(ExitFailed, QStringLiteral("the picture cannot be made a PNG file"));
    }
    return bytes;
}

QByteArray encodedFile(const RenderOptions &options, const QSize &asked, bool isSvg)
{
    const Picture picture = pictureOf(readExportedFile(options.file));
    if (picture.bounds().isNull()) {
        refuseEmpty(options);
    }
    const QSize size = sizeFor(picture.bounds(), asked);
    return isSvg ? svgOf(picture, size) : pngOf(imageOf(picture, size));
}

// In the middle, whatever the shape of the picture is. y of a scene is upward.
void paintScene(QPaintDevice &device, QGraphicsScene &scene, const QSize &size)
{
    QPainter painter(&device);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.fillRect(QRect({}, size), Qt::white);
    painter.translate(0, size.height());
    painter.scale(1, -1);
    const QRectF whole({}, size);
    QRectF place({}, scene.sceneRect().size().scaled(whole.size(), Qt::KeepAspectRatio));
    place.moveCenter(whole.center());
    scene.render(&painter, place);
}

QByteArray svgOf(QGraphicsScene &scene, const QSize &size)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setSize(size);
    generator.setViewBox(QRect({}, size));
    generator.setTitle(QString());
    generator.setDescription(QString());
    paintScene(generator, scene, size);
    // Its size is told in whole hundredths of a millimetre, which are no whole pixels.
    static const QRegularExpression told(QStringLiteral("width=\"[^\"]*\" height=\"[^\"]*\""));
    QString text = QString::fromUtf8(bytes);
    const QRegularExpressionMatch match = told.match(text);
    text.replace(match.capturedStart(), match.capturedLength(),
        QStringLiteral("width=\"%1\" height=\"%2\"").arg(size.width()).arg(size.height()));
    return text.toUtf8();
}

QByteArray encodedMarker(const RenderOptions &options, const QSize &asked, bool isSvg)
{
    const std::unique_ptr<DocumentMak> document = loadMarker(options.file);
    const CDbMarkerDrawing &drawing = *document->drawing();
    const int number = options.fabric == 0 ? drawing.currentFabric : options.fabric;
    if (number < 1 || number > drawing.getFabricsQty()) {
        refuse(QStringLiteral("there is no fabric %1; the marker has %2")
                   .arg(number)
                   .arg(drawing.getFabricsQty()));
    }
    SceneOptions shown;
    shown.fill = SceneOptions::BySize;
    MarkerScene scene(drawing, *drawing.getFabric(static_cast<short>(number - 1)), shown);
    if (scene.pieces().empty()) {
        refuseEmpty(options);
    }
    const QSize size = sizeFor(scene.sceneRect(), asked);
    if (isSvg) {
        return svgOf(scene, size);
    }
    QImage image(size, QImage::Format_RGB32);
    if (image.isNull()) {
        throw HostError(ExitFailed, QStringLiteral("a picture of %1x%2 does not fit into memory")
                                        .arg(size.width())
                                        .arg(size.height()));
    }
    paintScene(image, scene, size);
    return pngOf(image);
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
    const bool isSvg = suffix == QLatin1String("svg");
    const QByteArray bytes = isMarker(options.file) ? encodedMarker(options, asked, isSvg)
                                                    : encodedFile(options, asked, isSvg);
    QSaveFile file(options.output);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        throw HostError(ExitFailed,
            QStringLiteral("%1: cannot be written: %2").arg(options.output, file.errorString()));
    }
    return ExitDone;
}

} // namespace KivSystem
