#include "ui/welcome.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

namespace korvinth::ui {

Welcome::Welcome(const std::vector<WelcomeExample>& examples, QWidget& over)
    : QFrame(&over), over_(over)
{
    setObjectName("willkommen");
    setAccessibleName("Willkommen");
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    auto* title = new QLabel("<b>Willkommen bei Korvinth 2</b>", this);
    auto* text = new QLabel(
        "Links einen Term eintippen, zum Beispiel x^2, und die Eingabetaste drücken – oder ein "
        "Beispiel anklicken. <a href=\"hilfe\">Erste Schritte</a>",
        this);
    text->setObjectName("willkommen_text");
    text->setAccessibleDescription("Die Eingabetaste öffnet die Seite „Erste Schritte“ der Hilfe");
    text->setWordWrap(true);
    text->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    connect(text, &QLabel::linkActivated, this, &Welcome::helpWanted);
    auto* close = new QToolButton(this);
    close->setObjectName("willkommen_schliessen");
    close->setText("×");
    close->setToolTip("Schließen (Esc)");
    close->setAccessibleName("Schließen");
    close->setAutoRaise(true);
    connect(close, &QToolButton::clicked, this, &QObject::deleteLater);

    auto* head = new QHBoxLayout;
    head->addWidget(title, 1);
    head->addWidget(close);
    auto* row = new QHBoxLayout;
    row->setSpacing(6);
    int number = 0;
    for (const WelcomeExample& example : examples) AddExample(*row, example, number++);
    row->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 6, 6, 6);
    layout->setSpacing(6);
    layout->addLayout(head);
    layout->addWidget(text);
    layout->addLayout(row);
    qApp->installEventFilter(this);
    FollowPlace();
    show();
}

void Welcome::AddExample(QLayout& row, const WelcomeExample& example, int number)
{
    auto* button = new QToolButton(this);
    button->setObjectName(QStringLiteral("willkommen_beispiel[%1]").arg(number));
    button->setText(example.caption);
    button->setAccessibleName(example.caption);
    button->setToolTip("Dieses Beispiel zeichnen");
    button->setFocusPolicy(Qt::TabFocus);  // a click leaves the keys where they are
    button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    button->setIcon(QPixmap::fromImage(example.picture));
    button->setIconSize(example.picture.deviceIndependentSize().toSize());
    connect(button, &QToolButton::clicked, this, [this, number] { Q_EMIT exampleChosen(number); });
    row.addWidget(button);
}

void Welcome::FollowPlace()
{
    const int height = heightForWidth(over_.width());
    setGeometry(0, over_.height() - height, over_.width(), height);
    raise();
}

bool Welcome::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == &over_ && event->type() == QEvent::Resize) FollowPlace();
    if (event->type() != QEvent::KeyPress) return false;
    const auto* widget = qobject_cast<const QWidget*>(watched);
    if (widget == nullptr || widget->window() != window()) return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    // The blank presses the buttons in here.
    const bool typed = !key.text().isEmpty() && key.text().front().isPrint() && widget != this &&
                       !isAncestorOf(widget);
    if (typed || key.key() == Qt::Key_Escape) {
        qApp->removeEventFilter(this);
        hide();
        deleteLater();
    }
    return false;
}

}  // namespace korvinth::ui
