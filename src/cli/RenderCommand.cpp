// SPDX-License-Identifier: MIT
#include "CanvasSize.h"
#include "CommandLine.h"
#include "FormatCompare.h"
#include "Commands.h"

#include "NodeKey.h"
#include "SkinContext.h"
#include "SkinFormatName.h"
#include "RenderSetup.h"
#include "SkinCodec.h"
#include "StandardStreams.h"
#include "SkinLoader.h"
#include "SkinReadError.h"
#include "UiFileReader.h"
#include "clsKorviInterface.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <memory>
#include <QRegularExpression>

// korvi render [-i IMPORTED.ui]... FILE.ui [--skin-dir D] [--format R]
//              (--layer NAME | --all-layers) [--highlight NODEKEY] [--size WxH]
//              -o OUT [--boxes BOXES.json] [--compare OTHER_FORMAT]

namespace {

const char kUsage[] =
    "usage: korvi render [-i IMPORTED.ui]... FILE.ui [--skin-dir D] [--format R] [--code-page NAME] "
    "(--layer NAME | --all-layers) [--highlight NODEKEY] [--size WxH] -o OUT [--boxes BOXES.json] "
    "[--compare OTHER_FORMAT]";

// Information lines go to stderr as they come, one line per line.
class StderrInfoSink : public InfoSink
{
public:
    void append(const QString &text) override
    {
        QString lines = text;
        lines.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
        StandardStreams::writeText(stderr, lines);
    }
};

struct RenderOptions
{
    QStringList imported;
    QString file;
    QString skinDirectory;
    QString format;
    QString layer;
    bool allLayers = false;
    QString highlight;
    QSize size;
    QString output;
    QString boxes;
    SkinCodec codec;
    // Each layer drawn in this format too, beside the first.
    QString compare;
};

bool parseSize(const QString &text, QSize &size)
{
    static const QRegularExpression pattern(QStringLiteral("^(\\d{1,5})[xX](\\d{1,5})$"));
    const QRegularExpressionMatch m = pattern.match(text);
    if (!m.hasMatch() || m.captured(1).toInt() < 1 || m.captured(2).toInt() < 1)
        return false;
    size = QSize(m.captured(1).toInt(), m.captured(2).toInt());
    return true;
}

// Returns 0 when the options are complete, else the usage exit code after the message.
int parseOptions(const QStringList &arguments, RenderOptions &o)
{
    const auto valued = [](const char *name, const char *description, const char *valueName) {
        return QCommandLineOption(QLatin1String(name), QLatin1String(description), QLatin1String(valueName));
    };
    const QCommandLineOption skinDir = valued("skin-dir", "The default skin directory.", "D");
    const QCommandLineOption format = valued("format", "The skin format.", "R");
    const QCommandLineOption layer = valued("layer", "The layer to draw.", "NAME");
    const QCommandLineOption allLayers(QStringLiteral("all-layers"), QStringLiteral("Every layer and state."));
    const QCommandLineOption highlight = valued("highlight", "The node key of the object drawn as selected.", "NODEKEY");
    const QCommandLineOption size = valued("size", "The size of the pictures.", "WxH");
    const QCommandLineOption output = valued("o", "The picture, or the folder for --all-layers.", "OUT");
    const QCommandLineOption boxes = valued("boxes", "Where to write the drawn boxes.", "BOXES.json");
    const QCommandLineOption compare = valued("compare", "Each layer also in this format, side by side.", "FORMAT");
    QCommandLineParser parser;
    CommandLine::addImportedOption(parser);
    CommandLine::addCodePageOption(parser);
    parser.addOptions({ skinDir, format, layer, allLayers, highlight, size, output, boxes, compare });
    const QString usage = QLatin1String(kUsage);
    if (const int error = CommandLine::parseArguments(parser, arguments, usage, 1, 1))
        return error;
    const std::optional<SkinCodec> codec = CommandLine::codePage(parser);
    if (!codec)
        return 2;
    o.codec = *codec;
    o.imported = CommandLine::importedFiles(parser);
    o.file = parser.positionalArguments().first();
    o.skinDirectory = parser.value(skinDir);
    o.format = parser.value(format);
    o.layer = parser.value(layer);
    o.allLayers = parser.isSet(allLayers);
    o.highlight = parser.value(highlight);
    o.output = parser.value(output);
    o.boxes = parser.value(boxes);
    o.compare = parser.value(compare);
    if (parser.isSet(compare) && !SkinFormatName::isFormat(o.compare))
        return CommandLine::usageError(QStringLiteral("--compare wants a format such as 1024_600, not \"%1\"").arg(o.compare));
    if (parser.isSet(size) && !parseSize(parser.value(size), o.size))
        return CommandLine::usageError(QStringLiteral("--size wants WIDTHxHEIGHT, not \"%1\"").arg(parser.value(size)));
    if (o.output.isEmpty() || o.allLayers == !o.layer.isEmpty())
        return CommandLine::usageError(usage);
    return 0;
}

QSize canvasSize(const RenderOptions &o, const SkinContext &context, PictureCache &cache)
{
    return o.size.isValid() ? o.size : CanvasSize::forSkin(context, cache);
}

bool isDrawnBlock(const clsElement *block)
{
    return block->IsLayer() || block->IsState();
}

QString pictureFileName(const clsElement *block)
{
    QString name = SkinCodec::wordText(block->ElementKey());
    static const QRegularExpression unsafe(QStringLiteral("[^A-Za-z0-9_.\\[\\]-]"));
    name.replace(unsafe, QStringLiteral("_"));
    return name + QStringLiteral(".png");
}

QString htmlEscaped(const QString &text)
{
    return text.toHtmlEscaped();
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    return CommandLine::writeFile(path, bytes);
}

// The names the skin gives its layers, in its code page.
QString nameOf(const clsKorviInterface &doc, QByteArrayView bytes)
{
    return doc.codec().toText(bytes);
}

QByteArray contactSheet(const QVector<QPair<QString, QString>> &pictures, const QString &skinFile)
{
    QString html = QStringLiteral(
        "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n<title>%1</title>\n<style>\n"
        "body { font-family: sans-serif; background: #222; color: #eee; }\n"
        "figure { display: inline-block; margin: 12px; vertical-align: top; }\n"
        "img { border: 1px solid #666; max-width: 420px; }\n"
        "</style>\n</head>\n<body>\n<h1>%1</h1>\n").arg(htmlEscaped(skinFile));
    for (const auto &p : pictures) {
        html += QStringLiteral("<figure><a href=\"%1\"><img src=\"%1\" alt=\"%2\"></a>"
                               "<figcaption>%2</figcaption></figure>\n")
                    .arg(htmlEscaped(p.first), htmlEscaped(p.second));
    }
    html += QStringLiteral("</body>\n</html>\n");
    return html.toUtf8();
}

void appendBoxes(QJsonArray &boxes, const LayerRenderer &renderer, const QString &layerName)
{
    for (const LayerRenderer::DrawnObject &d : renderer.drawnObjects()) {
        QJsonObject o;
        o.insert(QStringLiteral("key"), SkinCodec::wordText(renderer.nodeKeyOf(d.element)));
        o.insert(QStringLiteral("left"), d.box.left);
        o.insert(QStringLiteral("top"), d.box.top);
        o.insert(QStringLiteral("width"), d.box.width);
        o.insert(QStringLiteral("height"), d.box.height);
        if (!layerName.isEmpty())
            o.insert(QStringLiteral("layer"), layerName);
        boxes.append(o);
    }
}

// Reads the -i files (imported), then the skin file as the editor opens it.
// Returns false after printing the error when a file cannot be read.
bool readSkin(clsKorviInterface &doc, const RenderOptions &o, QString &format)
{
    doc.setCodec(o.codec);
    try {
        for (const QString &path : o.imported)
            ReadUiFile(doc, path, true);
        format = SkinLoader::openSkinFile(doc, o.file).skinFormat;
    } catch (const SkinReadError &error) {
        CommandLine::printErr(QStringLiteral("korvi: ") + QString::fromStdString(error.what()));
        return false;
    }
    return true;
}

// The same skin file in the other format, read and set up to be drawn.
struct ComparedSkin
{
    clsKorviInterface doc;
    SkinContext context;
    StderrInfoSink info;
    std::unique_ptr<RenderSetup> setup;

    // False after printing why when the file cannot be read.
    bool open(const RenderOptions &o, const SkinContext &first)
    {
        if (first.SkinFormat.isEmpty()) {
            CommandLine::printErr(QStringLiteral("korvi: --compare needs the format of %1 (--format)").arg(o.file));
            return false;
        }
        const QString file = FormatCompare::fileInFormat(first.UiFilePath, first.SkinFormat, o.compare);
        if (!QFileInfo(file).isFile()) {
            CommandLine::printErr(QStringLiteral("korvi: no file %1 to compare with").arg(file));
            return false;
        }
        RenderOptions other = o;
        other.file = file;
        QString format;
        if (!readSkin(doc, other, format))
            return false;
        context.UiFilePath = file;
        context.SkinDirectory = first.SkinDirectory;
        context.SkinFormat = o.compare;
        setup = std::make_unique<RenderSetup>(doc, context, info);
        setup->fonts.loadSkinFonts(context);
        return true;
    }

    // The layer of the same name, in its format's own size; a dark picture
    // when the other file has no such layer.
    QImage draw(const clsElement *block, const RenderOptions &o)
    {
        const QSize size = o.size.isValid() ? o.size : CanvasSize::forSkin(context, setup->cache);
        QImage canvas(size, QImage::Format_RGB32);
        const clsElement *same = doc.Layers().Find(block->ElementKey());
        if (!same) {
            CommandLine::printErr(QStringLiteral("korvi: %1 has no layer \"%2\"").arg(context.UiFilePath,
                                                                                         SkinCodec::wordText(block->strName())));
            canvas.fill(qRgb(0, 0, 0));
            return canvas;
        }
        setup->renderer.DrawLayer(same, canvas);
        return canvas;
    }
};

} // namespace

int runRender(const QStringList &arguments)
{
    RenderOptions o;
    if (const int usage = parseOptions(arguments, o))
        return usage;

    // Nothing the command reads is written over by what it draws.
    const QStringList inputs = QStringList(o.imported) << o.file;
    for (const QString &input : inputs) {
        int exitCode = 0;
        if ((!o.allLayers && CommandLine::refuseSameFile(input, o.output, exitCode))
            || (!o.boxes.isEmpty() && CommandLine::refuseSameFile(input, o.boxes, exitCode)))
            return exitCode;
    }

    clsKorviInterface doc;
    QString formatFromName;
    if (!readSkin(doc, o, formatFromName))
        return 1;

    SkinContext context;
    context.UiFilePath = QFileInfo(o.file).absoluteFilePath();
    context.SkinDirectory = o.skinDirectory;
    context.SkinFormat = o.format.isEmpty() ? formatFromName : o.format;

    StderrInfoSink info;
    RenderSetup setup(doc, context, info);
    setup.fonts.loadSkinFonts(context);
    LayerRenderer &renderer = setup.renderer;

    if (!o.highlight.isEmpty()) {
        const clsElement *selected = NodeKey::ResolveNodeKey(doc, SkinCodec::wordBytes(o.highlight)).element;
        if (!selected)
            CommandLine::printErr(QStringLiteral("korvi: %1 names no object; nothing is highlighted").arg(o.highlight));
        renderer.setHighlighted(selected);
    }

    QVector<const clsElement *> blocks;
    if (o.allLayers) {
        for (const clsElement *block : doc.Layers()) {
            if (isDrawnBlock(block))
                blocks << block;
        }
    } else {
        const clsElement *block = doc.Layers().Find(SkinCodec::wordBytes(o.layer));
        if (!block) {
            CommandLine::printErr(QStringLiteral("korvi: %1 has no layer \"%2\"").arg(o.file, o.layer));
            return 1;
        }
        blocks << block;
    }

    if (o.allLayers && !QDir().mkpath(o.output)) {
        CommandLine::printErr(QStringLiteral("korvi: cannot make the folder %1").arg(o.output));
        return 1;
    }
    const QSize size = canvasSize(o, context, setup.cache);
    ComparedSkin compared;
    if (!o.compare.isEmpty() && !compared.open(o, context))
        return 1;
    QJsonArray boxes;
    QVector<QPair<QString, QString>> sheet;
    for (const clsElement *block : blocks) {
        QImage canvas(size, QImage::Format_RGB32);
        renderer.DrawLayer(block, canvas);
        const QString name = nameOf(doc, block->strName());
        const QString target = o.allLayers ? QDir(o.output).filePath(pictureFileName(block)) : o.output;
        const QImage picture = o.compare.isEmpty() ? canvas : FormatCompare::sideBySide(canvas, compared.draw(block, o));
        if (!CommandLine::writePng(target, picture, name))
            return 1;
        sheet.append({ pictureFileName(block), nameOf(doc, block->ElementType()) + QLatin1Char(':') + name });
        appendBoxes(boxes, renderer, o.allLayers ? SkinCodec::wordText(block->ElementKey()) : QString());
    }
    if (o.allLayers && !writeFile(QDir(o.output).filePath(QStringLiteral("index.html")),
                                  contactSheet(sheet, QFileInfo(o.file).fileName())))
        return 1;
    if (!o.boxes.isEmpty() && !writeFile(o.boxes, QJsonDocument(boxes).toJson(QJsonDocument::Indented)))
        return 1;
    return 0;
}
