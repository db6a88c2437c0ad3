#include "MarkerChild.h"

#include "KivCore/Locale.h"
#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"
#include "MarkerFacts.h"
#include "MarkerScene.h"
#include "MarkerView.h"
#include "PieceList.h"
#include "Ruler.h"
#include "WindowText.h"
#include "ZentrimView.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QSettings>
#include <QSplitter>
#include <QVBoxLayout>

namespace KivSystem {

namespace {

const char *const kSplitterKey = "window/marker_splitter";

class WaitCursor
{
public:
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
    WaitCursor(const WaitCursor &) = delete;
    WaitCursor &operator=(const WaitCursor &) = delete;
};

} // namespace

MarkerChild::MarkerChild(std::unique_ptr<DocumentMak> document, const SceneOptions &options)
    : m_document(std::move(document))
    , m_options(options)
{
    const CDbMarkerDrawing &drawing = *m_document->drawing();
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

    auto *footer = new QHBoxLayout;
    m_status = new QLabel(this);
    m_status->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_status->setWordWrap(true);
    m_status->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    footer->addWidget(m_status, 1);
    footer->setContentsMargins(6, 0, 6, 2);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(makeHeader());
    layout->addWidget(m_splitter, 1);
    layout->addLayout(footer);

    connect(m_list, &PieceList::piecesSelected, this, [this](const std::vector<int> &positions) {
        m_scene->selectPieces(positions);
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
    m_fabric = drawing.getFabric(static_cast<short>(drawing.currentFabric - 1)) != nullptr
                   ? drawing.currentFabric
                   : short(1);
    m_fabrics->setCurrentIndex(m_fabric - 1);
    makeScenes();
}

MarkerChild::~MarkerChild()
{
    m_view->setScene(nullptr); // the scenes go before the view and the list
    if (m_scene) {
        m_scene->disconnect(this);
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
    for (const CDbFabricObject *fabric : m_document->drawing()->getFabricsTable()) {
        m_fabrics->addItem(fabric->fabricStatus == 1
                               ? fabric->fabricName
                               : windowText("%1 (not exported)").arg(fabric->fabricName));
    }
    connect(m_fabrics, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        [this](int index) { showFabric(static_cast<short>(index + 1)); });
    auto *label = new QLabel(windowText("Fa&bric:"), header);
    label->setBuddy(m_fabrics);
    m_mode = new QLabel(windowText("Zentrim view: as it will be cut"), header);
    m_mode->setStyleSheet(
        QStringLiteral("background: #0b57d0; color: white; padding: 2px 8px; border-radius: 3px;"));
    m_mode->hide();
    m_messages = new QLabel(header);
    m_messages->setStyleSheet(QStringLiteral("color: #a01616;"));
    m_messages->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);

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
    makeScenes();
    m_view->fit();
}

void MarkerChild::setZentrimView(bool on)
{
    if (on == m_isZentrim) {
        return;
    }
    m_isZentrim = on;
    if (on) {
        m_hold = std::make_unique<ZentrimHold>(*m_document->drawing());
        makeZentrimScene();
    } else {
        m_hold.reset();
        m_view->showScene(m_scene.get());
        m_zentrim.reset();
    }
    m_mode->setVisible(on);
    m_list->setEnabled(!on);
    showStatus();
    emit zentrimViewChanged(on);
}

void MarkerChild::setOptions(const SceneOptions &options)
{
    m_options = options;
    if (m_scene) {
        m_scene->setOptions(options);
        m_list->showColours(*m_scene);
    }
    if (m_zentrim) {
        m_zentrim->setOptions(options);
    }
}

void MarkerChild::showPieceList(bool shown)
{
    m_list->setVisible(shown);
}

void MarkerChild::refresh()
{
    const std::size_t pieces = m_scene ? m_scene->pieces().size() : 0;
    const std::vector<int> selected = m_scene ? m_scene->selectedPieces() : std::vector<int>();
    makeScenes();
    if (m_scene && m_scene->pieces().size() == pieces) { // those of before
        m_scene->selectPieces(selected);
    }
    update();
}

void MarkerChild::selectAll(bool selected)
{
    if (!m_scene || m_isZentrim) {
        return;
    }
    std::vector<int> positions;
    for (std::size_t i = 0; selected && i < m_scene->pieces().size(); ++i) {
        positions.push_back(static_cast<int>(i));
    }
    m_scene->selectPieces(positions);
}

void MarkerChild::fitSelection()
{
    const QRectF rect = selectionRect();
    if (!rect.isNull() && !m_isZentrim) {
        m_view->fit(rect);
    }
}

QRectF MarkerChild::selectionRect() const
{
    QRectF rect;
    for (const int position : m_scene ? m_scene->selectedPieces() : std::vector<int>()) {
        rect = rect.united(
            m_scene->pieces()[static_cast<std::size_t>(position)].item->sceneBoundingRect());
    }
    return rect;
}

void MarkerChild::findPiece()
{
    m_list->findPiece();
}

void MarkerChild::makeScenes()
{
    const CDbFabricObject *fabric =
        m_document->drawing()->getFabric(static_cast<short>(m_fabric - 1));
    if (fabric == nullptr) {
        showStatus();
        return;
    }
    const WaitCursor cursor;
    auto scene = std::make_unique<MarkerScene>(*m_document->drawing(), *fabric, m_options);
    m_list->fill(*m_document->drawing(), *fabric, *scene);
    connect(scene.get(), &QGraphicsScene::selectionChanged, this,
        [this] { m_list->selectPieces(m_scene->selectedPieces()); });
    if (m_scene) {
        m_scene->disconnect(this);
    }
    m_view->showScene(scene.get());
    m_scene = std::move(scene);
    if (m_isZentrim) {
        makeZentrimScene();
    }
    showStatus();
}

void MarkerChild::makeZentrimScene()
{
    const WaitCursor cursor;
    auto scene = std::make_unique<ZentrimScene>(*m_document, m_fabric, m_options);
    m_view->showScene(scene.get());
    m_zentrim = std::move(scene);
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
    const QStringList messages = m_zentrim ? m_zentrim->messages() : QStringList();
    m_messages->setText(
        messages.size() < 2
            ? messages.join(QString())
            : windowText("%1 (and %2 more)").arg(messages.first()).arg(messages.size() - 1));
    m_messages->setToolTip(messages.join(QLatin1Char('\n')).toHtmlEscaped());
}

QString MarkerChild::statusText() const
{
    if (m_document->drawing()->getFabricsQty() == 0) {
        return windowText("This marker has no fabric.");
    }
    return m_zentrim && !m_zentrim->isRefused() ? m_zentrim->summary() : layersText();
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
    return layers.join(QStringLiteral("   |   "));
}

void MarkerChild::closeEvent(QCloseEvent *event)
{
    m_hold.reset(); // at once: the child itself is deleted later
    event->accept();
}

} // namespace KivSystem
