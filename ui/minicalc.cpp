#include "ui/minicalc.h"

#include <QAction>
#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QTextOption>
#include <utility>

#include "document/calculator.h"
#include "ui/storable_fields.h"

namespace korvinth::ui {
namespace {

// The window is measured in units of which a line of its text is 195 high.
constexpr double kUnitsPerLine = 195;
constexpr int kFirstWidth = 4000;
constexpr int kLeastWidth = 3000;
constexpr int kHeight = 1590;
constexpr int kMargin = 75;
constexpr int kFieldLeft = 1185;
constexpr int kBesideFields = 2295;
constexpr int kButtonFromRight = 1020;
constexpr int kButtonWidth = kButtonFromRight - kMargin;
constexpr int kPlacesWidth = 600;
constexpr int kControlHeight = 330;
constexpr int kTermTop = 60;
constexpr int kResultTop = 450;
constexpr int kResultHeight = 660;  // three lines: messages are long
constexpr int kPlacesTop = 1170;

// Dark red on pale red in light and dark desktops alike.
constexpr QColor kErrorText(0x8A, 0x0F, 0x12);
constexpr QColor kErrorBackground(0xFB, 0xE3, 0xE4);

bool IsEnter(int key) { return key == Qt::Key_Return || key == Qt::Key_Enter; }

// True when the key leafs through what was typed before.
bool LeafThrough(TermHistory& history, QLineEdit& field, int key)
{
    if (key == Qt::Key_Up) {
        field.setText(history.Older(field.text()));
    } else if (key == Qt::Key_Down) {
        field.setText(history.Newer(field.text()));
    } else {
        return false;
    }
    return true;
}

// Breaks its text anywhere and makes it smaller when it must: a number that is cut off would be
// read as another one.
class ResultLabel : public QLabel
{
public:
    using QLabel::QLabel;

protected:
    void paintEvent(QPaintEvent*) override
    {
        QTextOption option(Qt::AlignLeft | Qt::AlignVCenter);
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        const QRectF room = contentsRect().marginsRemoved({margin(), 0, margin(), 0});
        QPainter painter(this);
        drawFrame(&painter);
        painter.setPen(palette().color(foregroundRole()));
        constexpr int kSmallest = 60;  // percent of the window's font
        constexpr int kStep = 5;
        for (int percent = 100; percent >= kSmallest; percent -= kStep) {
            QFont smaller = font();
            smaller.setPointSizeF(font().pointSizeF() * percent / 100);
            painter.setFont(smaller);
            if (painter.boundingRect(room, text(), option).height() <= room.height()) break;
        }
        painter.drawText(room, text(), option);
    }
};

}  // namespace

MiniCalc::MiniCalc(term::MathParser& parser, const document::PlotDocument& document,
                   Dialogs& dialogs, QWidget* parent)
    : QWidget(parent),
      parser_(parser),
      document_(document),
      dialogs_(dialogs),
      term_caption_(new QLabel("&Term:", this)),
      term_(new QLineEdit(this)),
      equals_(new QPushButton("=", this)),
      result_caption_(new QLabel("Ergebnis:", this)),
      result_(new ResultLabel(this)),
      clear_(new QPushButton("&Löschen", this)),
      places_caption_(new QLabel("Genauigkeit:", this)),
      places_(new QLineEdit(this)),
      close_(new QPushButton("Schließen", this))
{
    setObjectName("minicalc");
    setWindowTitle("Taschenrechner");
    MakeControls();
    Connect();
    ShowPlaces();
    ShowLine("");
    HoldSize();
    resize(MiniCalc::sizeHint());
}

void MiniCalc::MakeControls()
{
    const auto name = [](QWidget* control, const char* object, const char* accessible,
                         const char* tip) {
        control->setObjectName(object);
        control->setAccessibleName(accessible);
        control->setToolTip(tip);
    };
    name(term_, "Text1", "Term",
         "Term, auch mit Parametern und Funktionen. Enter rechnet, ↑ und ↓ holen frühere Terme");
    name(equals_, "Command1", "Ausrechnen", "Ausrechnen (Enter)");
    name(result_, "Label1", "Ergebnis", "");
    name(clear_, "Command3", "Löschen", "Term und Ergebnis löschen");
    name(places_caption_, "Label2", "Genauigkeit", "");
    name(places_, "Text2", "Genauigkeit",
         "Stellen nach dem Komma, 0 bis 22. ↑ und ↓ holen frühere");
    name(close_, "Command2", "Schließen", "Fenster schließen (Esc)");
    term_caption_->setBuddy(term_);
    result_->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    result_->setTextFormat(Qt::PlainText);
    result_->setMargin(3);
    result_->setContextMenuPolicy(Qt::ActionsContextMenu);
    auto* copy = new QAction("Ergebnis kopieren", result_);
    connect(copy, &QAction::triggered, this,
            [this] { QGuiApplication::clipboard()->setText(result_->text()); });
    result_->addAction(copy);
    QWidget* before = nullptr;
    for (QWidget* control : {static_cast<QWidget*>(term_), static_cast<QWidget*>(equals_),
                             static_cast<QWidget*>(clear_), static_cast<QWidget*>(places_),
                             static_cast<QWidget*>(close_)}) {
        if (before != nullptr) setTabOrder(before, control);
        before = control;
    }
}

void MiniCalc::Connect()
{
    term_->installEventFilter(this);
    KeepReadable(*term_);
    KeepReadable(*places_);
    places_->installEventFilter(this);
    connect(equals_, &QPushButton::clicked, this, [this] {
        Calculate();
        term_->setFocus();
    });
    connect(clear_, &QPushButton::clicked, this, &MiniCalc::Clear);
    connect(close_, &QPushButton::clicked, this, &MiniCalc::closeWanted);
}

void MiniCalc::Calculate()
{
    history_.Add(term_->text());
    docalc();
}

void MiniCalc::docalc()
{
    calculated_ = term_->text();
    ShowResult();
}

void MiniCalc::Refresh()
{
    if (!result_->text().isEmpty()) ShowResult();
}

void MiniCalc::ShowResult()
{
    ShowLine(QString::fromStdString(document::CalculatorLine(
        parser_, document_, calculated_.toStdString(), document_.attributes.calculator_places)));
}

void MiniCalc::checkround(const QString& text)
{
    const auto places = document::DecimalPlacesOf(parser_, text.toStdString());
    if (places) {
        if (places_->isModified()) places_history_.Add(text);
        Q_EMIT placesChosen(*places);
        ShowPlaces();
    } else {
        dialogs_.ShowError("Stellen nach dem Komma:", "Ungültige Stellenzahl!");
    }
    docalc();
}

void MiniCalc::FollowSettings()
{
    ShowPlaces();
    Refresh();
}

void MiniCalc::ShowPlaces()
{
    const QString shown = QString::number(document_.attributes.calculator_places);
    if (places_->text() != shown) places_->setText(shown);
    places_->setModified(false);
}

void MiniCalc::Clear()
{
    history_.Add("");
    term_->clear();  // Ctrl+Z brings it back
    calculated_.clear();
    ShowLine("");
    term_->setFocus();
}

void MiniCalc::ShowLine(const QString& line)
{
    const bool error = line.toStdString().starts_with(document::kCalculatorError);
    QPalette colours;
    colours.setColor(QPalette::Window, error ? kErrorBackground : palette().color(QPalette::Base));
    colours.setColor(QPalette::WindowText, error ? kErrorText : palette().color(QPalette::Text));
    result_->setPalette(colours);
    result_->setAutoFillBackground(true);
    result_->setText(line);
    result_->setToolTip(line.toHtmlEscaped());
}

bool MiniCalc::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<const QKeyEvent&>(*event).key();
        if (watched == term_ && TakeTermKey(key)) return true;
        if (watched == places_ && TakePlacesKey(key)) return true;
    }
    if (watched == places_) FollowPlacesField(*event);
    return QWidget::eventFilter(watched, event);
}

bool MiniCalc::TakeTermKey(int key)
{
    if (!IsEnter(key)) return LeafThrough(history_, *term_, key);
    Calculate();
    return true;
}

bool MiniCalc::TakePlacesKey(int key)
{
    if (!LeafThrough(places_history_, *places_, key)) return false;
    places_->setModified(true);  // so that Esc takes it back
    return true;
}

// Only an Enter that was pressed here counts when it is released: the message of a refused number
// closes with Enter, too.
void MiniCalc::FollowPlacesField(const QEvent& event)
{
    const auto is_enter = [&event] {
        const auto& key = static_cast<const QKeyEvent&>(event);
        return IsEnter(key.key()) && !key.isAutoRepeat();
    };
    switch (event.type()) {
        case QEvent::KeyPress:
            if (is_enter()) enter_is_down_ = true;
            break;
        case QEvent::KeyRelease:
            if (is_enter() && std::exchange(enter_is_down_, false)) checkround(places_->text());
            break;
        case QEvent::FocusOut: {
            enter_is_down_ = false;
            const Qt::FocusReason reason = static_cast<const QFocusEvent&>(event).reason();
            // Another program's window or a menu gives the focus back.
            if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason) break;
            checkround(places_->text());
            break;
        }
        default: break;
    }
}

// Esc takes back a typed number of places; when there is none, the frame closes.
void MiniCalc::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && places_->isModified()) {
        ShowPlaces();
    } else {
        QWidget::keyPressEvent(event);
    }
}

int MiniCalc::Scaled(int units) const
{
    return qRound(units * fontMetrics().height() / kUnitsPerLine);
}

QSize MiniCalc::sizeHint() const { return {Scaled(kFirstWidth), Scaled(kHeight)}; }

void MiniCalc::HoldSize()
{
    setMinimumWidth(Scaled(kLeastWidth));
    setFixedHeight(Scaled(kHeight));
}

void MiniCalc::PlaceControls()
{
    const int field_width = width() - Scaled(kBesideFields);
    const int button_left = width() - Scaled(kButtonFromRight);
    const auto place = [this](QWidget* control, int left, int top, int width, int height) {
        control->setGeometry(left, Scaled(top), width, Scaled(height));
    };
    const int field_left = Scaled(kFieldLeft);
    const int caption_left = Scaled(kMargin);
    const int caption_width = field_left - caption_left;
    place(term_caption_, caption_left, kTermTop, caption_width, kControlHeight);
    place(term_, field_left, kTermTop, field_width, kControlHeight);
    place(equals_, button_left, kTermTop, Scaled(kButtonWidth), kControlHeight);
    place(result_caption_, caption_left, kResultTop, caption_width, kControlHeight);
    place(result_, field_left, kResultTop, field_width, kResultHeight);
    place(clear_, button_left, kResultTop, Scaled(kButtonWidth), kControlHeight);
    place(places_caption_, caption_left, kPlacesTop, caption_width, kControlHeight);
    place(places_, field_left, kPlacesTop, Scaled(kPlacesWidth), kControlHeight);
    place(close_, button_left, kPlacesTop, Scaled(kButtonWidth), kControlHeight);
}

void MiniCalc::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    PlaceControls();
}

void MiniCalc::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        HoldSize();
        PlaceControls();
    }
    if (event->type() == QEvent::PaletteChange) ShowLine(result_->text());
}

}  // namespace korvinth::ui
