#include "CutFileChild.h"

#include "CutWayView.h"
#include "KivCore/Locale.h"
#include "PaceFields.h"
#include "Window/WindowText.h"

#include <QAction>
#include <QBoxLayout>
#include <QComboBox>
#include <QLabel>
#include <QPainter>
#include <QProxyStyle>
#include <QSignalBlocker>
#include <QSlider>
#include <QToolButton>

#include <algorithm>
#include <array>
#include <cmath>

namespace KivSystem {

namespace {

constexpr double kSliderSteps = 10; // for a cm
constexpr int kTick = 40;           // ms between two pictures
constexpr std::array<int, 6> kPaces{1, 5, 20, 100, 500, 2000};
constexpr int kUsualPace = 2; // of kPaces

// A click in the groove brings the slider there, not by a page.
class JumpStyle : public QProxyStyle
{
public:
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
        QStyleHintReturn *data) const override
    {
        if (hint == SH_Slider_AbsoluteSetButtons) {
            return static_cast<int>(Qt::LeftButton);
        }
        return QProxyStyle::styleHint(hint, option, widget, data);
    }
};

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
        windowText("The time is an estimate: moves at the speeds of the file, plunges, drills and "
                   "frame advances, without speeding up and slowing down"));
    layout->addWidget(m_sum);
    m_timer.setInterval(kTick);
    connect(&m_timer, &QTimer::timeout, this, &CutFileChild::tick);
    connect(m_machine, &PaceFields::changed, this, &CutFileChild::applyPace);
    applyPace();
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
    m_place = new QLabel;
    m_place->setObjectName(QStringLiteral("place"));
    m_place->setToolTip(windowText("Where the head is, and what it does"));
    m_place->setWordWrap(true);
    m_place->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    row->addWidget(m_place, 1);
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

void CutFileChild::makeSlider()
{
    m_slider = new QSlider(Qt::Horizontal);
    auto *style = new JumpStyle;
    style->setParent(m_slider);
    m_slider->setStyle(style);
    m_slider->setObjectName(QStringLiteral("way"));
    m_slider->setRange(
        0, static_cast<int>(std::min(std::ceil(m_way->length() * kSliderSteps), 1e9)));
    m_slider->setSingleStep(static_cast<int>(kSliderSteps));
    m_slider->setPageStep(std::max(m_slider->maximum() / 50, 1));
    m_slider->setAccessibleName(windowText("Way of the knife"));
    m_slider->setToolTip(windowText("How far the knife is on its way"));
    connect(m_slider, &QSlider::valueChanged, this, [this] {
        m_ahead = 0;
        m_seconds = m_way->timeAt(way());
        showPlace();
    });
}

QWidget *CutFileChild::makeControls()
{
    auto *controls = new QWidget;
    auto *rows = new QVBoxLayout(controls);
    rows->setContentsMargins(0, 0, 0, 0);
    makeSlider();
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
    m_machine = new PaceFields;
    rows->addWidget(m_machine);
    return controls;
}

void CutFileChild::refresh()
{
    m_machine->applyUnit();
    applyPace();
}

void CutFileChild::applyPace()
{
    m_way = std::make_unique<CutWay>(m_program, m_machine->pace());
    m_seconds = m_way->timeAt(way());
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
          << windowText("pieces and waste cuts: %1").arg(m_sums.pieces);
    if (m_sums.looseHoles > 0) {
        parts << windowText("holes outside of the pieces: %1").arg(m_sums.looseHoles);
    }
    parts << windowText("cut: %1").arg(lengthText(m_sums.cut))
          << windowText("idle: %1").arg(lengthText(m_sums.idle));
    if (m_sums.pen > 0) {
        parts << windowText("pen: %1").arg(lengthText(m_sums.pen));
    }
    parts << windowText("notch strokes: %1").arg(m_sums.notches)
          << windowText("drills: %1").arg(m_sums.drills)
          << windowText("plunges: %1").arg(m_sums.plunges)
          << windowText("tool changes: %1").arg(m_sums.toolChanges)
          << windowText("labels: %1").arg(m_sums.labels)
          << windowText("frame advances: %1").arg(m_sums.advances)
          << windowText("time: about %1 min").arg(timeText(m_way->duration()));
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
    goTo(way, m_way->timeAt(way));
}

void CutFileChild::goTo(double way, double seconds)
{
    const bool atEnd = way >= m_way->length();
    const double steps = std::floor(std::max(way, 0.0) * kSliderSteps + 1e-6);
    {
        const QSignalBlocker blocker(m_slider);
        m_slider->setValue(atEnd ? m_slider->maximum() : static_cast<int>(steps));
    }
    m_ahead = atEnd ? 0 : std::max(way, 0.0) - steps / kSliderSteps;
    m_seconds = seconds;
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
    if (on && m_seconds >= m_way->duration()) {
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
    const double seconds =
        std::min(m_seconds + kTick / 1000.0 * m_pace->currentData().toInt(), m_way->duration());
    goTo(m_way->wayAt(seconds), seconds);
    if (seconds >= m_way->duration()) {
        play(false);
    }
}

void CutFileChild::showPlace()
{
    const CutWay::Place place = m_way->at(way());
    const KivLocale locale;
    m_view->setPlace(place);
    QString text = windowText("%1 of %2, %3 of %4 min, X %5 Y %6")
                       .arg(lengthText(way()), lengthText(m_way->length()), timeText(m_seconds),
                           timeText(m_way->duration()))
                       .arg(locale.formatLengthX(place.point.x(), KivLocale::WithUnit),
                           locale.formatLengthY(place.point.y(), KivLocale::WithUnit));
    if (place.step < m_program.steps.size() && m_program.steps[place.step].part > 0) {
        const auto number = static_cast<std::size_t>(m_program.steps[place.step].part);
        const CutPart &part = m_program.parts[number];
        text.prepend((part.isLooseHole() ? windowText("hole %1: ") : windowText("piece %1: "))
                         .arg(part.number));
    }
    m_place->setText(text);
}

} // namespace KivSystem
