#include "CutFileChild.h"

#include "CutWayView.h"
#include "KivCore/Locale.h"
#include "Window/WindowText.h"

#include <QAction>
#include <QBoxLayout>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QPainter>
#include <QSettings>
#include <QSignalBlocker>
#include <QSlider>
#include <QToolButton>

#include <algorithm>
#include <array>
#include <cmath>

namespace KivSystem {

namespace {

const char *const kKnifeKey = "viewer/knife_speed"; // m/min
const char *const kIdleKey = "viewer/idle_speed";
constexpr double kLeastSpeed = 0.1; // m/min
constexpr double kMostSpeed = 500;
constexpr double kSliderSteps = 10; // for a cm
constexpr int kTick = 40;           // ms between two pictures
constexpr std::array<int, 6> kPaces{1, 5, 20, 100, 500, 2000};
constexpr int kUsualPace = 2; // of kPaces

QString timeText(double seconds)
{
    const auto whole = static_cast<qint64>(std::llround(seconds));
    return QStringLiteral("%1:%2").arg(whole / 60).arg(whole % 60, 2, 10, QLatin1Char('0'));
}

QString lengthText(double centimetres)
{
    return KivLocale().formatLength(centimetres, KivLocale::WithUnit);
}

// A line, or a cross, as the picture has it.
QPixmap sampleOf(StrokeKind kind)
{
    QPixmap pixmap(26, 14);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    QPen pen(colourOf(kind), 2);
    if (kind == StrokeKind::Idle) {
        pen.setDashPattern({3, 2});
    }
    painter.setPen(pen);
    if (kind == StrokeKind::Drill) {
        painter.drawLine(8, 7, 18, 7);
        painter.drawLine(13, 2, 13, 12);
    } else {
        painter.drawLine(2, 7, 24, 7);
    }
    return pixmap;
}

} // namespace

CutFileChild::CutFileChild(CutProgram program, QWidget *parent)
    : MdiChild(parent)
    , m_program(std::move(program))
    , m_sums(sumOf(m_program))
    , m_way(std::make_unique<CutWay>(m_program))
    , m_view(new CutWayView(m_program))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(m_view, 1);
    layout->addWidget(makeLegend());
    layout->addWidget(makeControls());
    m_sum = new QLabel;
    m_sum->setObjectName(QStringLiteral("sum"));
    m_sum->setWordWrap(true);
    m_sum->setTextFormat(Qt::PlainText);
    m_sum->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_sum->setToolTip(
        windowText("Time of the moves at the speeds of the file; plunges, drills and frame "
                   "advances are not in it"));
    layout->addWidget(m_sum);
    m_timer.setInterval(kTick);
    connect(&m_timer, &QTimer::timeout, this, &CutFileChild::tick);
    applySpeeds();
    setFocusProxy(m_slider);
}

CutFileChild::~CutFileChild() = default;

QWidget *CutFileChild::makeLegend()
{
    auto *legend = new QWidget;
    auto *row = new QHBoxLayout(legend);
    row->setContentsMargins(0, 0, 0, 0);
    for (const StrokeKind kind : {StrokeKind::Cut, StrokeKind::Notch, StrokeKind::Drill,
             StrokeKind::Pen, StrokeKind::Idle}) {
        auto *sample = new QLabel;
        sample->setPixmap(sampleOf(kind));
        row->addWidget(sample);
        row->addWidget(new QLabel(nameOf(kind)));
        row->addSpacing(10);
    }
    row->addStretch(1);
    m_place = new QLabel;
    m_place->setObjectName(QStringLiteral("place"));
    m_place->setToolTip(windowText("Where the head is, and what it does"));
    row->addWidget(m_place);
    return legend;
}

QToolButton *CutFileChild::addButton(QBoxLayout *row, const char *text, const char *shortcut,
    const char *tip, void (CutFileChild::*run)())
{
    auto *action = new QAction(windowText(text), this);
    action->setShortcut(QKeySequence(QLatin1String(shortcut)));
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    action->setToolTip(QStringLiteral("%1 (%2)").arg(windowText(tip), QLatin1String(shortcut)));
    connect(action, &QAction::triggered, this, run);
    addAction(action);
    auto *button = new QToolButton;
    button->setDefaultAction(action);
    button->setFocusPolicy(Qt::TabFocus);
    row->addWidget(button);
    return button;
}

QWidget *CutFileChild::makeControls()
{
    auto *controls = new QWidget;
    auto *rows = new QVBoxLayout(controls);
    rows->setContentsMargins(0, 0, 0, 0);
    m_slider = new QSlider(Qt::Horizontal);
    m_slider->setObjectName(QStringLiteral("way"));
    m_slider->setRange(
        0, static_cast<int>(std::min(std::ceil(m_way->length() * kSliderSteps), 1e9)));
    m_slider->setSingleStep(static_cast<int>(kSliderSteps));
    m_slider->setPageStep(std::max(m_slider->maximum() / 50, 1));
    m_slider->setAccessibleName(windowText("Way of the knife"));
    m_slider->setToolTip(windowText("How far the knife is on its way"));
    connect(m_slider, &QSlider::valueChanged, this, [this] {
        m_ahead = 0;
        showPlace();
    });
    rows->addWidget(m_slider);

    auto *row = new QHBoxLayout;
    rows->addLayout(row);
    m_play = addButton(row, "Play", "P", "Run the knife, or stop it", &CutFileChild::togglePlay);
    m_play->defaultAction()->setCheckable(true);
    m_pace = new QComboBox;
    m_pace->setToolTip(windowText("How much faster than the machine the knife runs here"));
    m_pace->setAccessibleName(windowText("Pace"));
    for (const int pace : kPaces) {
        m_pace->addItem(QStringLiteral("%1x").arg(pace), pace);
    }
    m_pace->setCurrentIndex(kUsualPace);
    row->addWidget(m_pace);
    addButton(row, "|<", "[", "To the piece before", &CutFileChild::partBack);
    addButton(row, "<", ",", "Back by one move", &CutFileChild::stepBack);
    addButton(row, ">", ".", "On by one move", &CutFileChild::stepOn);
    addButton(row, ">|", "]", "To the next piece", &CutFileChild::partOn);
    QToolButton *fit = addButton(row, "Fit", "F", "Show the whole file", &CutFileChild::fitView);
    fit->defaultAction()->setShortcut(QKeySequence()); // the key is the window's
    row->addStretch(1);
    addSpeeds(row);
    return controls;
}

void CutFileChild::addSpeeds(QBoxLayout *row)
{
    const CutSpeeds usual;
    m_knifeSpeed = makeSpeed(kKnifeKey, usual.knife);
    m_knifeSpeed->setToolTip(windowText("Full speed of the knife and of the pen, for the time"));
    m_idleSpeed = makeSpeed(kIdleKey, usual.idle);
    m_idleSpeed->setToolTip(windowText("Speed with all tools up, for the time"));
    const std::array<std::pair<QString, QDoubleSpinBox *>, 2> fields{
        {{windowText("&Knife"), m_knifeSpeed}, {windowText("&Idle"), m_idleSpeed}}};
    for (const auto &field : fields) {
        auto *label = new QLabel(field.first);
        label->setBuddy(field.second);
        row->addWidget(label);
        row->addWidget(field.second);
    }
}

QDoubleSpinBox *CutFileChild::makeSpeed(const char *key, double usual)
{
    auto *box = new QDoubleSpinBox;
    box->setRange(kLeastSpeed, kMostSpeed);
    box->setDecimals(1);
    box->setSuffix(windowText(" m/min"));
    const QString name = QLatin1String(key);
    box->setObjectName(name);
    bool isNumber = false;
    const double stored = QSettings().value(name, usual).toDouble(&isNumber);
    box->setValue(isNumber && std::isfinite(stored) ? stored : usual);
    connect(
        box, qOverload<double>(&QDoubleSpinBox::valueChanged), this, [this, name](double value) {
            QSettings().setValue(name, value);
            applySpeeds();
        });
    return box;
}

void CutFileChild::applySpeeds()
{
    m_way =
        std::make_unique<CutWay>(m_program, CutSpeeds{m_knifeSpeed->value(), m_idleSpeed->value()});
    m_sum->setText(sumText());
    showPlace();
}

QString CutFileChild::sumText() const
{
    QStringList parts;
    if (!m_program.name.isEmpty()) {
        parts.append(m_program.name);
    }
    parts << windowText("%1, unit %2").arg(m_program.dialect, m_program.unit)
          << windowText("pieces and waste cuts: %1").arg(m_program.parts)
          << windowText("cut: %1").arg(lengthText(m_sums.cut))
          << windowText("idle: %1").arg(lengthText(m_sums.idle));
    if (m_sums.pen > 0) {
        parts << windowText("pen: %1").arg(lengthText(m_sums.pen));
    }
    parts << windowText("notch strokes: %1").arg(m_sums.notches)
          << windowText("drills: %1").arg(m_sums.drills)
          << windowText("plunges: %1").arg(m_program.plunges)
          << windowText("tool changes: %1").arg(m_sums.toolChanges)
          << windowText("labels: %1").arg(m_sums.labels)
          << windowText("frame advances: %1").arg(m_sums.advances)
          << windowText("moves: about %1 min").arg(timeText(m_way->duration()));
    return parts.join(QStringLiteral("   "));
}

double CutFileChild::way() const
{
    return m_slider->value() >= m_slider->maximum() ? m_way->length()
                                                    : m_slider->value() / kSliderSteps + m_ahead;
}

QPointF CutFileChild::knife() const
{
    return m_way->at(way()).point;
}

void CutFileChild::goTo(double way)
{
    const bool atEnd = way >= m_way->length();
    const double steps = std::floor(std::max(way, 0.0) * kSliderSteps + 1e-6);
    {
        const QSignalBlocker blocker(m_slider);
        m_slider->setValue(atEnd ? m_slider->maximum() : static_cast<int>(steps));
    }
    m_ahead = atEnd ? 0 : std::max(way, 0.0) - steps / kSliderSteps;
    showPlace();
}

void CutFileChild::moveStep(int steps)
{
    const std::size_t step = m_way->at(way()).step;
    if (steps > 0) {
        // Past steps that take no way, such as drills.
        std::size_t next = step + 1;
        while (next < m_program.steps.size() && m_way->wayTo(next) <= way() + 1e-9) {
            ++next;
        }
        goTo(m_way->wayTo(next));
    } else {
        std::size_t before = step;
        while (before > 0 && m_way->wayTo(before) >= way() - 1e-9) {
            --before;
        }
        goTo(m_way->wayTo(before));
    }
}

void CutFileChild::movePart(int parts)
{
    const std::vector<CutStep> &steps = m_program.steps;
    if (steps.empty()) {
        return;
    }
    std::size_t step = std::min(m_way->at(way()).step, steps.size() - 1);
    if (parts > 0) {
        const int part = steps[step].part;
        while (step < steps.size() && steps[step].part == part) {
            ++step;
        }
    } else {
        // The start of this piece, or of the one before when the head stands there already.
        while (step > 0 && m_way->wayTo(step) >= way() - 1e-9) {
            --step;
        }
        while (step > 0 && steps[step - 1].part == steps[step].part) {
            --step;
        }
    }
    goTo(m_way->wayTo(step));
}

void CutFileChild::fitView()
{
    m_view->fit();
}

void CutFileChild::play(bool on)
{
    if (on && way() >= m_way->length()) {
        goTo(0);
    }
    if (on) {
        m_timer.start();
    } else {
        m_timer.stop();
    }
    m_play->defaultAction()->setChecked(on);
    m_play->defaultAction()->setText(on ? windowText("Pause") : windowText("Play"));
}

void CutFileChild::tick()
{
    const double seconds = kTick / 1000.0 * m_pace->currentData().toInt();
    goTo(m_way->wayAt(m_way->timeAt(way()) + seconds));
    if (way() >= m_way->length()) {
        play(false);
    }
}

void CutFileChild::showPlace()
{
    const CutWay::Place place = m_way->at(way());
    const KivLocale locale;
    m_view->setPlace(place);
    QString text = windowText("%1 of %2, %3 of %4 min, X %5 Y %6")
                       .arg(lengthText(way()), lengthText(m_way->length()),
                           timeText(m_way->timeAt(way())), timeText(m_way->duration()))
                       .arg(locale.formatLengthX(place.point.x(), KivLocale::WithUnit),
                           locale.formatLengthY(place.point.y(), KivLocale::WithUnit));
    if (place.step < m_program.steps.size() && m_program.steps[place.step].part > 0) {
        text.prepend(windowText("piece %1: ").arg(m_program.steps[place.step].part));
    }
    m_place->setText(text);
}

} // namespace KivSystem
