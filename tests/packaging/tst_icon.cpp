// SPDX-License-Identifier: MIT
#include <QDataStream>
#include <QFile>
#include <QImage>
#include <QXmlStreamReader>
#include <QtTest>

namespace {

QList<int> iconSizes()
{
    QList<int> sizes;
    for (const QString &size : QStringLiteral(KORVI_ICON_SIZES).split(QLatin1Char(' '), Qt::SkipEmptyParts))
        sizes << size.toInt();
    return sizes;
}

QImage icon(int size)
{
    return QImage(QStringLiteral(KORVI_ICON_DIR "/korvi-editor-%1.png").arg(size));
}

QColor averageColour(const QImage &image)
{
    const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
    qint64 r = 0, g = 0, b = 0;
    const qint64 pixels = qint64(argb.width()) * argb.height();
    for (int y = 0; y < argb.height(); ++y) {
        for (int x = 0; x < argb.width(); ++x) {
            const QColor c = argb.pixelColor(x, y);
            r += c.red();
            g += c.green();
            b += c.blue();
        }
    }
    return QColor(int(r / pixels), int(g / pixels), int(b / pixels));
}

} // namespace

class TestIcon : public QObject
{
    Q_OBJECT

private slots:
    void everySizeIsASquareWithTransparentCorners()
    {
        const QList<int> sizes = iconSizes();
        QVERIFY(sizes.contains(48));
        QVERIFY(sizes.contains(256));
        for (int size : sizes) {
            const QImage image = icon(size);
            QCOMPARE(image.size(), QSize(size, size));
            QVERIFY(image.hasAlphaChannel());
            QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
            QCOMPARE(image.pixelColor(size / 2, size / 2).alpha(), 255);
        }
    }

    void theSmallSizesShowTheLargeDrawing()
    {
        const QImage large = icon(256).scaled(32, 32, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        const QColor expected = averageColour(large);
        const QColor actual = averageColour(icon(32));
        QVERIFY2(qAbs(expected.red() - actual.red()) <= 8 && qAbs(expected.green() - actual.green()) <= 8
                     && qAbs(expected.blue() - actual.blue()) <= 8,
                 qPrintable(expected.name() + QStringLiteral(" against ") + actual.name()));
    }

    void theScalableIconIsAnSvgDrawingOfTheSameSquare()
    {
        QFile file(QStringLiteral(KORVI_ICON_DIR "/korvi-editor.svg"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QXmlStreamReader svg(&file);
        QVERIFY(svg.readNextStartElement());
        QCOMPARE(svg.name(), QLatin1String("svg"));
        QCOMPARE(svg.namespaceUri(), QLatin1String("http://www.w3.org/2000/svg"));
        QCOMPARE(svg.attributes().value(QLatin1String("viewBox")), QLatin1String("0 0 256 256"));
        QStringList shapes;
        while (!svg.atEnd()) {
            if (svg.readNext() == QXmlStreamReader::StartElement)
                shapes << svg.name().toString();
        }
        QVERIFY2(!svg.hasError(), qPrintable(svg.errorString()));
        QVERIFY(shapes.contains(QStringLiteral("rect")));
        QVERIFY(shapes.contains(QStringLiteral("polygon")));
        QVERIFY(shapes.contains(QStringLiteral("linearGradient")));
    }

    // The Windows icon file holds every size, each as the PNG drawn for it.
    void theWindowsIconHoldsEverySize()
    {
        QFile file(QStringLiteral(KORVI_ICON_DIR "/korvi-editor.ico"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray ico = file.readAll();
        QDataStream in(ico);
        in.setByteOrder(QDataStream::LittleEndian);
        quint16 reserved = 1, type = 0, count = 0;
        in >> reserved >> type >> count;
        QCOMPARE(reserved, quint16(0));
        QCOMPARE(type, quint16(1));
        const QList<int> sizes = iconSizes();
        QCOMPARE(int(count), sizes.size());
        for (int i = 0; i < count; ++i) {
            quint8 width = 0, height = 0, colours = 0, zero = 0;
            quint16 planes = 0, bits = 0;
            quint32 length = 0, offset = 0;
            in >> width >> height >> colours >> zero >> planes >> bits >> length >> offset;
            const int size = sizes.at(i);
            QCOMPARE(int(width), size >= 256 ? 0 : size);
            QCOMPARE(int(height), int(width));
            QCOMPARE(bits, quint16(32));
            QVERIFY(qint64(offset) + length <= ico.size());
            const QImage picture = QImage::fromData(ico.mid(offset, length), "PNG");
            QCOMPARE(picture.size(), QSize(size, size));
            QCOMPARE(picture.convertToFormat(QImage::Format_ARGB32), icon(size).convertToFormat(QImage::Format_ARGB32));
        }
    }
};

QTEST_GUILESS_MAIN(TestIcon)
#include "tst_icon.moc"
