#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

// Renders an SVG file into a square PNG: FILE.svg SIZE FILE.png.
int main(int argc, char** argv) {
    if (argc != 4)
        return 2;
    QSvgRenderer drawing(QString::fromLocal8Bit(argv[1]));
    const int size = QByteArray(argv[2]).toInt();
    const QString target = QString::fromLocal8Bit(argv[3]);
    if (!drawing.isValid() || size < 1)
        return 1;
    QImage picture(size, size, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    drawing.render(&painter);
    painter.end();
    QDir().mkpath(QFileInfo(target).path());
    return picture.save(target) ? 0 : 1;
}
