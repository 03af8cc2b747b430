// SPDX-License-Identifier: MIT
// Draws the program's icon: a skin's screen with a button held in the editor's
// moving frame, and a pencil. The icon is described once, as shapes in a
// 256 x 256 square, and written both as an SVG drawing and as PNG pictures of
// the sizes asked for, so that the two never differ; the PNG pictures are also
// put together as the Windows icon file.
//
//   korvi-icon OUTDIR SIZE...   writes OUTDIR/korvi-editor.svg,
//                               OUTDIR/korvi-editor-SIZE.png for every SIZE
//                               and OUTDIR/korvi-editor.ico with all of them

#include <QBuffer>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPolygonF>
#include <QTextStream>
#include <cstdio>
#include <vector>

namespace {

const qreal kSide = 256;

struct Shape
{
    enum Kind { Box, Line, Area };
    Kind kind = Box;
    QRectF box;          // Box
    qreal radius = 0;    // Box: the corners' radius
    QPolygonF points;    // Line and Area
    QColor fill;         // not valid: no fill
    QColor fillBottom;   // valid: the fill runs from top to bottom into this colour
    QColor stroke;       // not valid: no outline
    qreal strokeWidth = 0;
    qreal dash = 0;      // length of the dashes and of the gaps; 0: a solid outline
};

Shape box(const QRectF &rect, qreal radius, const QColor &fill)
{
    Shape s;
    s.box = rect;
    s.radius = radius;
    s.fill = fill;
    return s;
}

Shape area(const QPolygonF &points, const QColor &fill)
{
    Shape s;
    s.kind = Shape::Area;
    s.points = points;
    s.fill = fill;
    return s;
}

std::vector<Shape> iconShapes()
{
    std::vector<Shape> shapes;
    Shape back = box({ 16, 16, 224, 224 }, 44, QColor(0x2b, 0x5f, 0x9e));
    back.fillBottom = QColor(0x16, 0x32, 0x5a);
    shapes.push_back(back);

    Shape screen = box({ 40, 64, 176, 128 }, 12, QColor(0x0e, 0x22, 0x38));
    screen.stroke = QColor(0x9c, 0xc8, 0xff);
    screen.strokeWidth = 6;
    shapes.push_back(screen);

    Shape route;
    route.kind = Shape::Line;
    route.points = QPolygonF({ { 60, 174 }, { 98, 142 }, { 130, 154 }, { 186, 98 } });
    route.stroke = QColor(0xf4, 0xa2, 0x61);
    route.strokeWidth = 10;
    shapes.push_back(route);

    shapes.push_back(box({ 58, 82, 60, 24 }, 6, QColor(0x4f, 0xb3, 0xa9)));

    Shape frame = box({ 51, 75, 74, 38 }, 0, QColor());
    frame.stroke = Qt::white;
    frame.strokeWidth = 3;
    frame.dash = 6;
    shapes.push_back(frame);
    for (const QPointF &corner : { QPointF(51, 75), QPointF(125, 75), QPointF(51, 113), QPointF(125, 113) })
        shapes.push_back(box({ corner.x() - 5, corner.y() - 5, 10, 10 }, 0, Qt::white));

    // The pencil lies at 45 degrees, its point towards the lower left.
    shapes.push_back(area({ { 157.8, 190.6 }, { 207.3, 141.1 }, { 222.9, 156.7 }, { 173.4, 206.2 } },
                          QColor(0xff, 0xd1, 0x66)));
    shapes.push_back(area({ { 207.3, 141.1 }, { 215.8, 132.6 }, { 231.4, 148.2 }, { 222.9, 156.7 } },
                          QColor(0xef, 0x47, 0x6f)));
    shapes.push_back(area({ { 150, 214 }, { 157.8, 190.6 }, { 173.4, 206.2 } }, QColor(0xf1, 0xdc, 0xb8)));
    shapes.push_back(area({ { 150, 214 }, { 152.4, 206.6 }, { 157.4, 211.6 } }, QColor(0x33, 0x33, 0x33)));
    return shapes;
}

QString number(qreal value) { return QString::number(value, 'g', 6); }

QString svgPoints(const QPolygonF &points)
{
    QStringList pairs;
    for (const QPointF &p : points)
        pairs << number(p.x()) + QLatin1Char(',') + number(p.y());
    return pairs.join(QLatin1Char(' '));
}

QString svgPaint(const Shape &s, int index)
{
    QString paint;
    if (s.fillBottom.isValid())
        paint += QStringLiteral(" fill=\"url(#fill%1)\"").arg(index);
    else
        paint += QStringLiteral(" fill=\"%1\"").arg(s.fill.isValid() ? s.fill.name() : QStringLiteral("none"));
    if (s.stroke.isValid()) {
        paint += QStringLiteral(" stroke=\"%1\" stroke-width=\"%2\"").arg(s.stroke.name(), number(s.strokeWidth));
        if (s.kind == Shape::Line)
            paint += QStringLiteral(" stroke-linecap=\"round\" stroke-linejoin=\"round\"");
        if (s.dash > 0)
            paint += QStringLiteral(" stroke-dasharray=\"%1 %1\"").arg(number(s.dash));
    }
    return paint;
}

QString svgElement(const Shape &s, int index)
{
    switch (s.kind) {
    case Shape::Box:
        return QStringLiteral("  <rect x=\"%1\" y=\"%2\" width=\"%3\" height=\"%4\" rx=\"%5\"%6/>\n")
            .arg(number(s.box.x()), number(s.box.y()), number(s.box.width()), number(s.box.height()),
                 number(s.radius), svgPaint(s, index));
    case Shape::Line:
        return QStringLiteral("  <polyline points=\"%1\"%2/>\n").arg(svgPoints(s.points), svgPaint(s, index));
    case Shape::Area:
        return QStringLiteral("  <polygon points=\"%1\"%2/>\n").arg(svgPoints(s.points), svgPaint(s, index));
    }
    return QString();
}

QString svg(const std::vector<Shape> &shapes)
{
    QString text = QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%1\" height=\"%1\" "
                                  "viewBox=\"0 0 %1 %1\">\n")
                       .arg(number(kSide));
    QString gradients;
    QString body;
    for (int i = 0; i < int(shapes.size()); ++i) {
        const Shape &s = shapes[i];
        if (s.fillBottom.isValid()) {
            gradients += QStringLiteral("    <linearGradient id=\"fill%1\" x1=\"0\" y1=\"0\" x2=\"0\" y2=\"1\">"
                                        "<stop offset=\"0\" stop-color=\"%2\"/>"
                                        "<stop offset=\"1\" stop-color=\"%3\"/></linearGradient>\n")
                             .arg(i)
                             .arg(s.fill.name(), s.fillBottom.name());
        }
        body += svgElement(s, i);
    }
    if (!gradients.isEmpty())
        text += QStringLiteral("  <defs>\n") + gradients + QStringLiteral("  </defs>\n");
    return text + body + QStringLiteral("</svg>\n");
}

QBrush brushOf(const Shape &s)
{
    if (s.fillBottom.isValid()) {
        const QRectF bounds = s.kind == Shape::Box ? s.box : s.points.boundingRect();
        QLinearGradient gradient(bounds.topLeft(), bounds.bottomLeft());
        gradient.setColorAt(0, s.fill);
        gradient.setColorAt(1, s.fillBottom);
        return gradient;
    }
    return s.fill.isValid() ? QBrush(s.fill) : QBrush(Qt::NoBrush);
}

// The same outline as the SVG's: butt ends and mitred corners unless the
// shape is a line, dashes measured in the drawing's units.
QPen penOf(const Shape &s)
{
    if (!s.stroke.isValid())
        return Qt::NoPen;
    const bool line = s.kind == Shape::Line;
    QPen pen(s.stroke, s.strokeWidth, Qt::SolidLine, line ? Qt::RoundCap : Qt::FlatCap,
             line ? Qt::RoundJoin : Qt::MiterJoin);
    if (s.dash > 0)
        pen.setDashPattern({ s.dash / s.strokeWidth, s.dash / s.strokeWidth });
    return pen;
}

QImage picture(const std::vector<Shape> &shapes, int size)
{
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(size / kSide, size / kSide);
    for (const Shape &s : shapes) {
        p.setBrush(brushOf(s));
        p.setPen(penOf(s));
        switch (s.kind) {
        case Shape::Box:
            p.drawRoundedRect(s.box, s.radius, s.radius);
            break;
        case Shape::Line:
            p.drawPolyline(s.points);
            break;
        case Shape::Area:
            p.drawPolygon(s.points);
            break;
        }
    }
    return image;
}

bool writeText(const QString &path, const QString &text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    return file.write(text.toUtf8()) >= 0 && file.flush();
}

// A Windows icon file: a directory of the pictures, each stored as PNG (as
// Windows reads since Vista); sizes above 255 are written as 0.
QByteArray icoFile(const std::vector<QByteArray> &pngs, const std::vector<int> &sizes)
{
    QByteArray ico;
    QDataStream out(&ico, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    out << quint16(0) << quint16(1) << quint16(pngs.size());
    quint32 offset = quint32(6 + 16 * pngs.size());
    for (size_t i = 0; i < pngs.size(); ++i) {
        const quint8 side = sizes[i] >= 256 ? 0 : quint8(sizes[i]);
        out << side << side << quint8(0) << quint8(0) << quint16(1) << quint16(32)
            << quint32(pngs[i].size()) << offset;
        offset += quint32(pngs[i].size());
    }
    for (const QByteArray &png : pngs)
        out.writeRawData(png.constData(), int(png.size()));
    return ico;
}

QByteArray pngOf(const QImage &image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

bool writeBytes(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    return file.write(bytes) == bytes.size() && file.flush();
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc < 2) {
        fprintf(stderr, "usage: korvi-icon OUTDIR SIZE...\n");
        return 2;
    }
    const QDir out(QString::fromLocal8Bit(argv[1]));
    if (!out.mkpath(QStringLiteral("."))) {
        fprintf(stderr, "cannot make %s\n", argv[1]);
        return 1;
    }
    const std::vector<Shape> shapes = iconShapes();
    const QString svgPath = out.filePath(QStringLiteral("korvi-editor.svg"));
    if (!writeText(svgPath, svg(shapes))) {
        fprintf(stderr, "cannot write %s\n", qPrintable(svgPath));
        return 1;
    }
    std::vector<QByteArray> pngs;
    std::vector<int> sizes;
    for (int i = 2; i < argc; ++i) {
        const int size = atoi(argv[i]);
        const QString path = out.filePath(QStringLiteral("korvi-editor-%1.png").arg(size));
        const QByteArray png = size > 0 ? pngOf(picture(shapes, size)) : QByteArray();
        if (png.isEmpty() || !writeBytes(path, png)) {
            fprintf(stderr, "cannot write %s\n", qPrintable(path));
            return 1;
        }
        pngs.push_back(png);
        sizes.push_back(size);
    }
    const QString icoPath = out.filePath(QStringLiteral("korvi-editor.ico"));
    if (!writeBytes(icoPath, icoFile(pngs, sizes))) {
        fprintf(stderr, "cannot write %s\n", qPrintable(icoPath));
        return 1;
    }
    return 0;
}
