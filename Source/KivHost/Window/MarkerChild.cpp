#include "MarkerChild.h"

#include "KivCore/Locale.h"
#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"
#include "MarkerFacts.h"
#include "MarkerScene.h"
#include "MarkerView.h"
#include "PieceList.h"
#include "Ruler.h"
#include "TypeAhead.h"
#include "WindowText.h"
#include "ZentrimView.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QSettings>
#include <QSignalBlocker>
#include <QSplitter>
#include <QVBoxLayout>

namespace KivSystem {

namespace {

constexpr int kLeastWidthForList = 640;
const char *const kSplitterKey = "window/marker_splitter";

class WaitCursor
{
public:
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
    WaitCursor(const WaitCursor &) = delete;
    WaitCursor &operator=(const WaitCursor &) = delete;
};

/// One line that ends in an ellipsis where there is no room for all of it.
class ElidedLabel : public QLabel
{
public:
    explicit ElidedLabel(QWidget *parent) : QLabel(parent)
    {
        setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        const QRect room = contentsRect();
        QPainter painter(this);
        painter.setPen(palette().color(foregroundRole()));
        painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
            fontMetrics().elidedText(text(), Qt::ElideRight, room.width()));
    }
};

// The wanted one if the drawing has it, else the one that it was stored with, else the first.
short fabricOf(const CDbMarkerDrawing &drawing, short wanted)
{
    for (const short number : {wanted, drawing.currentFabric}) {
        if (drawing.getFabric(static_cast<short>(number - 1)) != nullptr) {
            return number;
        }
    }
    return 1;
}

} // namespace

MarkerChild::MarkerChild(std::unique_ptr<DocumentMak> document, const SceneOptions &options)
    : m_document(std::move(document))
    , m_options(options)
    , m_fabric(fabricOf(*m_document->drawing(), m_document->drawing()->currentFabric))
{
    setWindowTitle(m_document->name());
    m_splitter = new QSplitter(this);
    m_splitter->setObjectName(QStringLiteral("markerSplitter"));
    m_splitter->setChildrenCollapsible(false);
    m_splitter->addWidget(makeDrawing());
    m_list = new PieceList(m_splitter);
    m_splitter->setStretchFactor(0, 1);
    m_splitter->setSizes({720, 340});
    m_splitter->restoreState(QSettings().value(QLatin1String(kSplitterKey)).toByteArray());
    connect(m_splitter, &QSplitter::splitterMoved, this,
        [this] { QSettings().setValue(QLatin1String(kSplitterKey), m_splitter->saveState()); });

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(makeHeader());
    layout->addWidget(m_splitter, 1);
    layout->addWidget(makeStatusLine());

    connect(m_list, &PieceList::piecesSelected, this, [this](const std::vector<int> &positions) {
        scene()->selectPieces(positions);
        if (!positions.empty() && !m_isZentrim) {
            m_view->reveal(selectionRect());
        }
    });
    connect(m_list, &PieceList::pieceActivated, this, [this] { fitSelection(); });
    connect(this, &MdiChild::signalSent, this, [this](MdiChild::signalType signal) {
        if (signal == ShowZentrimView) {
            setZentrimView(true);
        }
    });
    showScenes(makeScenes(*m_document, m_fabric));
}

MarkerChild::~MarkerChild()
{
    m_view->setScene(nullptr); // the scenes go before the view and the list
    if (scene() != nullptr) {
        scene()->disconnect(this);
    }
}

// Everything is made of the new document before anything of the old one goes.
void MarkerChild::setDocument(std::unique_ptr<DocumentMak> document)
{
    CDbMarkerDrawing &drawing = *document->drawing();
    const short fabric = fabricOf(drawing, m_fabric);
    drawing.currentFabric = fabric;
    std::unique_ptr<ZentrimHold> hold;
    if (m_isZentrim) {
        hold = std::make_unique<ZentrimHold>(drawing); // makeScenes() cuts it as optimised
    }
    Scenes scenes = makeScenes(*document, fabric);
    const bool isOtherFabric = fabric != m_fabric;
    if (!isOtherFabric) {
        keepSelection(scenes);
    }

    m_document.swap(document); // the old one goes at the end of this function, behind its users
    m_hold = std::move(hold);
    m_fabric = fabric;
    setWindowTitle(m_document->name());
    listFabrics();
    showScenes(std::move(scenes));
    if (isOtherFabric) {
        m_view->fit();
    }
}

QString MarkerChild::path() const
{
    return m_document->drawing()->filePath;
}

QWidget *MarkerChild::makeHeader()
{
    auto *header = new QWidget(this);
    m_fabrics = new QComboBox(header);
    m_fabrics->setToolTip(windowText("The fabric that is shown (Ctrl+PgUp, Ctrl+PgDown)"));
    m_fabrics->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    keepTypedLetters(*m_fabrics);
    listFabrics();
    connect(m_fabrics, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        [this](int index) { showFabric(static_cast<short>(index + 1)); });
    auto *label = new QLabel(windowText("Fa&bric:"), header);
    label->setBuddy(m_fabrics);
    m_mode = new QLabel(windowText("Zentrim view: as it will be cut"), header);
    m_mode->setStyleSheet(
        QStringLiteral("background: #0b57d0; color: white; padding: 2px 8px; border-radius: 3px;"));
    m_mode->hide();
    m_messages = new ElidedLabel(header);
    QPalette red = m_messages->palette();
    red.setColor(m_messages->foregroundRole(), QColor(0xa0, 0x16, 0x16));
    m_messages->setPalette(red);

    auto *layout = new QHBoxLayout(header);
    layout->setContentsMargins(6, 4, 6, 2);
    layout->addWidget(label);
    layout->addWidget(m_fabrics);
    layout->addWidget(m_mode);
    layout->addWidget(m_messages, 1);
    m_mouse = new QLabel(header); // not in the footer, whose height would change with it
    m_mouse->setToolTip(windowText("The place under the mouse"));
    layout->addWidget(m_mouse);
    return header;
}

QWidget *MarkerChild::makeStatusLine()
{
    m_status = new QLabel(this);
    m_status->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_status->setWordWrap(true);
    m_status->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_status->setContentsMargins(6, 0, 6, 2);
    return m_status;
}

void MarkerChild::listFabrics()
{
    const QSignalBlocker blocker(m_fabrics);
    m_fabrics->clear();
    for (const CDbFabricObject *fabric : m_document->drawing()->getFabricsTable()) {
        m_fabrics->addItem(fabric->fabricStatus == 1
                               ? fabric->fabricName
                               : windowText("%1 (not exported)").arg(fabric->fabricName));
    }
    m_fabrics->setCurrentIndex(m_fabric - 1);
}

QWidget *MarkerChild::makeDrawing()
{
    auto *drawing = new QWidget(m_splitter);
    m_view = new MarkerView(drawing);
    m_view->setAccessibleName(windowText("Drawing"));
    setFocusProxy(m_view);
    auto *layout = new QVBoxLayout(drawing);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(new Ruler(*m_view, drawing));
    layout->addWidget(m_view, 1);
    connect(m_view, &MarkerView::mouseMoved, this, [this](double x, double y) {
        const KivLocale locale;
        m_mouse->setText(QStringLiteral("x %1   y %2")
                             .arg(locale.formatLengthX(x, KivLocale::WithUnit),
                                 locale.formatLengthY(y, KivLocale::WithUnit)));
    });
    connect(m_view, &MarkerView::mouseLeft, this, [this] { m_mouse->clear(); });
    return drawing;
}

void MarkerChild::showFabric(short fabric)
{
    if (fabric == m_fabric ||
        m_document->drawing()->getFabric(static_cast<short>(fabric - 1)) == nullptr) {
        return;
    }
    m_fabric = fabric;
    m_document->drawing()->currentFabric = fabric; // what an export of one fabric takes
    m_fabrics->setCurrentIndex(fabric - 1);
    showScenes(makeScenes(*m_document, m_fabric));
    m_view->fit();
}

void MarkerChild::setZentrimView(bool on)
{
    if (on == m_isZentrim) {
        return;
    }
    m_isZentrim = on;
    if (on) {
        const WaitCursor cursor;
        m_hold = std::make_unique<ZentrimHold>(*m_document->drawing());
        m_scenes.zentrim = std::make_unique<ZentrimScene>(*m_document, m_fabric, m_options);
        m_view->showScene(m_scenes.zentrim.get());
    } else {
        m_hold.reset();
        m_view->showScene(scene());
        m_scenes.zentrim.reset();
    }
    m_mode->setVisible(on);
    if (m_list->isAncestorOf(focusWidget())) {
        m_view->setFocus(); // keys would be lost with the list
    }
    m_list->setEnabled(!on);
    showStatus();
    emit zentrimViewChanged(on);
}

void MarkerChild::setOptions(const SceneOptions &options)
{
    m_options = options;
    if (scene() != nullptr) {
        scene()->setOptions(options);
        m_list->showColours(*scene());
    }
    if (m_scenes.zentrim) {
        m_scenes.zentrim->setOptions(options);
    }
}

void MarkerChild::showPieceList(bool shown)
{
    m_hasList = shown;
    m_list->setVisible(shown && width() >= kLeastWidthForList);
}

// In a small tile the drawing takes all.
void MarkerChild::resizeEvent(QResizeEvent *event)
{
    MdiChild::resizeEvent(event);
    showPieceList(m_hasList);
}

void MarkerChild::refresh()
{
    Scenes scenes = makeScenes(*m_document, m_fabric);
    keepSelection(scenes);
    showScenes(std::move(scenes));
    update();
}

void MarkerChild::selectAll(bool selected)
{
    if (scene() == nullptr || m_isZentrim) {
        return;
    }
    std::vector<int> positions;
    for (std::size_t i = 0; selected && i < scene()->pieces().size(); ++i) {
        positions.push_back(static_cast<int>(i));
    }
    scene()->selectPieces(positions);
}

void MarkerChild::fitSelection()
{
    const QRectF rect = selectionRect();
    if (!rect.isNull() && !m_isZentrim) {
        m_view->fitTo(rect);
    }
}

QRectF MarkerChild::selectionRect() const
{
    QRectF rect;
    for (const int position : scene() ? scene()->selectedPieces() : std::vector<int>()) {
        rect = rect.united(
            scene()->pieces()[static_cast<std::size_t>(position)].item->sceneBoundingRect());
    }
    return rect;
}

void MarkerChild::findPiece()
{
    m_list->findPiece();
}

MarkerChild::Scenes MarkerChild::makeScenes(const DocumentMak &document, short fabric) const
{
    const WaitCursor cursor;
    Scenes scenes;
    const CDbMarkerDrawing &drawing = *document.drawing();
    if (const CDbFabricObject *shown = drawing.getFabric(static_cast<short>(fabric - 1))) {
        scenes.marker = std::make_unique<MarkerScene>(drawing, *shown, m_options);
    }
    if (m_isZentrim) {
        scenes.zentrim = std::make_unique<ZentrimScene>(document, fabric, m_options);
    }
    return scenes;
}

void MarkerChild::keepSelection(const Scenes &scenes) const
{
    if (scenes.marker && scene() != nullptr) {
        scenes.marker->selectLike(*scene());
    }
}

void MarkerChild::showScenes(Scenes scenes)
{
    if (scene() != nullptr) {
        scene()->disconnect(this);
    }
    if (scenes.zentrim) {
        m_view->showScene(scenes.zentrim.get());
    } else {
        m_view->showScene(scenes.marker.get());
    }
    m_scenes = std::move(scenes);
    listPieces();
    showStatus();
}

void MarkerChild::listPieces()
{
    if (scene() == nullptr) {
        m_list->clear();
        return;
    }
    const CDbMarkerDrawing &drawing = *m_document->drawing();
    m_list->fill(drawing, *drawing.getFabric(static_cast<short>(m_fabric - 1)), *scene());
    m_list->selectPieces(scene()->selectedPieces());
    connect(scene(), &QGraphicsScene::selectionChanged, this,
        [this] { m_list->selectPieces(scene()->selectedPieces()); });
}

void MarkerChild::showStatus()
{
    const QString status = statusText();
    const QChar space(QChar::Nbsp); // lines break between two facts alone
    QString unbroken = status;
    unbroken.replace(QLatin1Char(' '), space);
    unbroken.replace(QLatin1Char(',') + QString(space), QStringLiteral(", "));
    unbroken.replace(space + QString(space) + QLatin1Char('|'), QStringLiteral("  |"));
    m_status->setText(unbroken);
    m_status->setToolTip(status);
    const QStringList messages = m_scenes.zentrim ? m_scenes.zentrim->messages() : QStringList();
    m_messages->setText(
        messages.size() < 2
            ? messages.join(QString())
            : windowText("1 of %1: %2").arg(QString::number(messages.size()), messages.first()));
    m_messages->setToolTip(plainToolTip(messages.join(QLatin1Char('\n'))));
}

QString MarkerChild::statusText() const
{
    if (m_document->drawing()->getFabricsQty() == 0) {
        return windowText("This marker has no fabric.");
    }
    const bool isCut = m_scenes.zentrim && !m_scenes.zentrim->isRefused();
    return isCut ? m_scenes.zentrim->summary() : layersText();
}

QString MarkerChild::layersText() const
{
    const CDbMarkerDrawing &drawing = *m_document->drawing();
    const CDbFabricObject &fabric = *drawing.getFabric(static_cast<short>(m_fabric - 1));
    const KivLocale locale;
    QStringList layers;
    forEachNumber(fabric.layerCount(), [&](short layer) {
        const LayerFacts facts = layerFacts(fabric, layer);
        layers.append(windowText("%1: length %2, width %3, efficiency %4, %5 placed, %6 to place")
                          .arg(drawing.getLayerObjectTable()[layer - 1]->layerName,
                              locale.formatLength(facts.length, KivLocale::WithUnit),
                              locale.formatLength(facts.width, KivLocale::WithUnit),
                              locale.formatPercentage(facts.efficiency / 100, KivLocale::WithUnit),
                              QString::number(facts.placed), QString::number(facts.toPlace)));
    });
    if (drawing.zentrimActif && !m_isZentrim) { // there it says more than that
        layers.append(windowText("stored as optimised"));
    }
    return layers.join(QStringLiteral("   |   "));
}

void MarkerChild::closeEvent(QCloseEvent *event)
{
    m_hold.reset(); // at once: the child itself is deleted later
    event->accept();
}

} // namespace KivSystem
