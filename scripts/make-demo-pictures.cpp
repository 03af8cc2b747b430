// SPDX-License-Identifier: MIT
// Draws the pictures of the demo skin (samples/demo-skin). Run through
// make-demo-pictures.sh, which builds this program, runs it, and turns the PNG
// pictures it writes for RL files into RL pictures with "korvi png2rl".
//
// Everything is drawn from shapes: no font, no outside picture. Magenta
// (255, 0, 255) is the transparent colour of skin pictures; antialiasing is off
// where a shape meets magenta so that no blended edge pixels appear.

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <cstdio>

namespace {

const QColor kMagenta(255, 0, 255);

QImage canvas(int w, int h, const QColor &fill = kMagenta)
{
    QImage image(w, h, QImage::Format_RGB32);
    image.fill(fill);
    return image;
}

void save(const QImage &image, const QString &path, const char *format, int quality = -1)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    if (!image.save(path, format, quality)) {
        fprintf(stderr, "cannot write %s\n", qPrintable(path));
        exit(1);
    }
    printf("%s\n", qPrintable(path));
}

QImage background()
{
    QImage image = canvas(800, 480);
    QPainter p(&image);
    QLinearGradient g(0, 0, 0, 480);
    g.setColorAt(0, QColor(18, 28, 46));
    g.setColorAt(1, QColor(6, 10, 20));
    p.fillRect(image.rect(), g);
    p.setPen(QColor(30, 44, 66));
    for (int x = 0; x < 800; x += 40)
        p.drawLine(x, 0, x, 479);
    for (int y = 0; y < 480; y += 40)
        p.drawLine(0, y, 799, y);
    return image;
}

QImage topBar()
{
    QImage image = canvas(800, 56);
    QPainter p(&image);
    QLinearGradient g(0, 0, 0, 56);
    g.setColorAt(0, QColor(52, 64, 86));
    g.setColorAt(1, QColor(26, 32, 46));
    // A tab in the middle; the corners right and left of it stay transparent.
    p.fillRect(0, 0, 800, 44, g);
    QPainterPath tab;
    tab.addRoundedRect(280, 0, 240, 56, 10, 10);
    p.fillPath(tab, g);
    p.fillRect(0, 43, 280, 1, QColor(90, 170, 255));
    p.fillRect(520, 43, 280, 1, QColor(90, 170, 255));
    return image;
}

// Two frames, normal and pressed, of a rounded menu button.
QImage menuButton()
{
    QImage image = canvas(180, 240);
    QPainter p(&image);
    for (int frame = 0; frame < 2; ++frame) {
        const QRect r(0, frame * 120, 180, 120);
        QLinearGradient g(r.topLeft(), r.bottomLeft());
        g.setColorAt(0, frame == 0 ? QColor(46, 110, 190) : QColor(230, 140, 30));
        g.setColorAt(1, frame == 0 ? QColor(20, 52, 100) : QColor(140, 70, 10));
        QPainterPath path;
        path.addRoundedRect(r.adjusted(0, 0, -1, -1), 16, 16);
        p.fillPath(path, g);
        p.setPen(QColor(150, 200, 255));
        p.drawLine(r.left() + 16, r.top() + 1, r.right() - 16, r.top() + 1);
    }
    return image;
}

// Two frames of 72 x 72, a round button; its descriptor gives the frame height.
QImage roundButton()
{
    QImage image = canvas(72, 144);
    QPainter p(&image);
    for (int frame = 0; frame < 2; ++frame) {
        QRadialGradient g(QPointF(30, frame * 72 + 28), 40);
        g.setColorAt(0, frame == 0 ? QColor(110, 220, 120) : QColor(250, 220, 90));
        g.setColorAt(1, frame == 0 ? QColor(20, 110, 40) : QColor(170, 110, 10));
        p.setBrush(g);
        p.setPen(Qt::NoPen);
        p.drawEllipse(QRect(2, frame * 72 + 2, 68, 68));
    }
    return image;
}

QImage listRow()
{
    QImage image = canvas(520, 52);
    QPainter p(&image);
    QLinearGradient g(0, 0, 520, 0);
    g.setColorAt(0, QColor(38, 48, 66));
    g.setColorAt(1, QColor(24, 30, 42));
    p.fillRect(0, 0, 520, 50, g);
    p.fillRect(0, 50, 520, 2, QColor(70, 90, 120));
    return image;
}

QImage listRowFirst()
{
    QImage image = listRow();
    QPainter p(&image);
    p.fillRect(0, 0, 6, 50, QColor(90, 170, 255));
    return image;
}

QImage sliderTrack()
{
    QImage image = canvas(320, 12);
    QPainter p(&image);
    QPainterPath path;
    path.addRoundedRect(0, 0, 319, 11, 6, 6);
    p.fillPath(path, QColor(70, 80, 100));
    QPainterPath filled;
    filled.addRoundedRect(0, 0, 208, 11, 6, 6);
    p.fillPath(filled, QColor(90, 170, 255));
    return image;
}

QImage knob()
{
    QImage image = canvas(28, 36);
    QPainter p(&image);
    QPainterPath path;
    path.addRoundedRect(0, 0, 27, 35, 8, 8);
    p.fillPath(path, QColor(235, 240, 248));
    p.fillRect(12, 8, 4, 20, QColor(90, 170, 255));
    return image;
}

// Unchecked and checked frames.
QImage checkBox()
{
    QImage image = canvas(36, 72);
    QPainter p(&image);
    for (int frame = 0; frame < 2; ++frame) {
        const QRect r(2, frame * 36 + 2, 31, 31);
        p.fillRect(r, QColor(230, 234, 240));
        p.fillRect(r.adjusted(3, 3, -3, -3), frame == 0 ? QColor(40, 48, 62) : QColor(60, 180, 90));
    }
    return image;
}

// Six 40 x 40 icons stacked: home, gear, pin, speaker, compass rose, back.
QImage icons()
{
    QImage image = canvas(40, 240);
    QPainter p(&image);
    const QColor ink(245, 248, 255);
    p.setPen(Qt::NoPen);
    p.setBrush(ink);
    // 0 home
    p.drawPolygon(QPolygon({ QPoint(20, 4), QPoint(36, 18), QPoint(4, 18) }));
    p.drawRect(9, 18, 22, 17);
    p.fillRect(17, 25, 7, 10, kMagenta);
    // 1 gear
    p.translate(0, 40);
    for (int i = 0; i < 8; ++i) {
        p.save();
        p.translate(20, 20);
        p.rotate(45 * i);
        p.drawRect(-3, -17, 6, 8);
        p.restore();
    }
    p.drawEllipse(QPoint(20, 20), 11, 11);
    p.setBrush(kMagenta);
    p.drawEllipse(QPoint(20, 20), 4, 4);
    p.setBrush(ink);
    // 2 map pin
    p.translate(0, 40);
    p.drawEllipse(QPoint(20, 15), 11, 11);
    p.drawPolygon(QPolygon({ QPoint(10, 19), QPoint(30, 19), QPoint(20, 37) }));
    p.setBrush(kMagenta);
    p.drawEllipse(QPoint(20, 15), 4, 4);
    p.setBrush(ink);
    // 3 speaker
    p.translate(0, 40);
    p.drawRect(5, 14, 8, 12);
    p.drawPolygon(QPolygon({ QPoint(13, 14), QPoint(24, 5), QPoint(24, 35), QPoint(13, 26) }));
    p.drawRect(28, 12, 3, 16);
    p.drawRect(33, 8, 3, 24);
    // 4 compass rose
    p.translate(0, 40);
    p.drawPolygon(QPolygon({ QPoint(20, 2), QPoint(25, 20), QPoint(20, 38), QPoint(15, 20) }));
    p.drawPolygon(QPolygon({ QPoint(2, 20), QPoint(20, 15), QPoint(38, 20), QPoint(20, 25) }));
    // 5 back arrow
    p.translate(0, 40);
    p.drawPolygon(QPolygon({ QPoint(4, 20), QPoint(18, 6), QPoint(18, 14), QPoint(36, 14), QPoint(36, 26),
                             QPoint(18, 26), QPoint(18, 34) }));
    return image;
}

QImage compass()
{
    QImage image = canvas(64, 64);
    QPainter p(&image);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(28, 36, 52));
    p.drawEllipse(0, 0, 63, 63);
    p.setBrush(QColor(230, 60, 50));
    p.drawPolygon(QPolygon({ QPoint(32, 6), QPoint(39, 32), QPoint(25, 32) }));
    p.setBrush(QColor(235, 240, 248));
    p.drawPolygon(QPolygon({ QPoint(32, 58), QPoint(39, 32), QPoint(25, 32) }));
    return image;
}

QImage map()
{
    QImage image = canvas(800, 480, QColor(236, 228, 210));
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(190, 220, 170));
    p.drawEllipse(QRect(80, 260, 260, 160));
    p.drawEllipse(QRect(560, 60, 180, 120));
    QPainterPath river;
    river.moveTo(0, 120);
    river.cubicTo(200, 60, 380, 240, 800, 180);
    p.setPen(QPen(QColor(150, 190, 230), 26));
    p.setBrush(Qt::NoBrush);
    p.drawPath(river);
    p.setPen(QPen(QColor(255, 255, 255), 14));
    p.drawLine(0, 330, 800, 300);
    p.drawLine(420, 0, 470, 480);
    p.setPen(QPen(QColor(250, 200, 90), 10));
    p.drawLine(0, 430, 800, 380);
    p.setPen(QPen(QColor(60, 130, 230), 8, Qt::SolidLine, Qt::RoundCap));
    p.drawPolyline(QPolygon({ QPoint(120, 320), QPoint(440, 310), QPoint(455, 180), QPoint(700, 150) }));
    return image;
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    if (argc != 3) {
        fprintf(stderr, "usage: make-demo-pictures SKIN_DIR RL_PNG_DIR\n");
        return 2;
    }
    const QString skin = QString::fromLocal8Bit(argv[1]);
    const QString rl = QString::fromLocal8Bit(argv[2]);
    // Pictures read by Qt's readers as they are.
    save(background(), skin + "/800_480/background/default.bmp", "BMP");
    save(roundButton(), skin + "/800_480/btn_round.bmp", "BMP");
    save(listRow(), skin + "/800_480/list_row.bmp", "BMP");
    save(listRowFirst(), skin + "/800_480/list_row_first.bmp", "BMP");
    save(checkBox(), skin + "/800_480/check.bmp", "BMP");
    save(map(), skin + "/800_480/map.jpg", "JPEG", 85);
    // Pictures that become RL files: PNG first, named after their RL file.
    save(topBar(), rl + "/800_480/topbar.png", "PNG");
    save(menuButton(), rl + "/800_480/btn_menu.png", "PNG");
    save(sliderTrack(), rl + "/800_480/slider_track.png", "PNG");
    save(icons(), rl + "/common/icons.png", "PNG");
    save(knob(), rl + "/common/knob.png", "PNG");
    save(compass(), rl + "/common/vga/800_480/compass.png", "PNG");
    return 0;
}
