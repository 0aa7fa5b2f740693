// The yardstick for pictures: writes an empty one of 1920 x 1080, compressed as the program does,
// into the file that its argument names.
#include <QFile>
#include <QImage>

int main(int argc, char** argv)
{
    if (argc != 2) return 2;
    QImage image(1920, 1080, QImage::Format_RGB32);
    image.fill(Qt::white);
    constexpr int kQuality = 50;
    return image.save(QFile::decodeName(argv[1]), "PNG", kQuality) ? 0 : 1;
}
