// What the first start shows below the empty graph: examples to click, and the way to the help.
#pragma once

#include <QFrame>
#include <QImage>
#include <QString>
#include <vector>

namespace korvinth::ui {

struct WelcomeExample
{
    QString caption;
    QImage picture;
};

// A panel at the lower edge of `over`, which it follows. It goes for good with Esc, or when
// something is typed in the same window.
class Welcome final : public QFrame
{
    Q_OBJECT
public:
    Welcome(const std::vector<WelcomeExample>& examples, QWidget& over);

Q_SIGNALS:
    void exampleChosen(int number);
    void helpWanted();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void AddExample(QLayout& row, const WelcomeExample& example, int number);
    void FollowPlace();

    QWidget& over_;
};

}  // namespace korvinth::ui
