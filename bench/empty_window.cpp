// The yardstick for starting: an empty window of the program's size, by the toolkit alone. With any
// argument it has a menu and a line of text, for which the toolkit has to find its fonts.
#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>

int main(int argc, char** argv)
{
    const QApplication toolkit(argc, argv);
    QMainWindow window;
    if (argc > 1) {
        window.menuBar()->addMenu("Datei");
        window.setCentralWidget(new QLabel("Funktionsgraphen", &window));
    }
    window.resize(1280, 800);
    window.show();
    return QApplication::exec();
}
