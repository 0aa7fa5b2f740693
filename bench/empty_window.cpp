// The yardstick for starting: an empty window of the program's size, by the toolkit alone.
#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv)
{
    const QApplication toolkit(argc, argv);
    QMainWindow window;
    window.resize(1280, 800);
    window.show();
    return QApplication::exec();
}
