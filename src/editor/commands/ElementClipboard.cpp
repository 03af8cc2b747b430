// SPDX-License-Identifier: MIT
#include "ElementClipboard.h"

#include "ElementText.h"
#include "SkinReadError.h"
#include "UiFileReader.h"
#include "UiFileWriter.h"
#include "clsKorviInterface.h"

#include <QDataStream>
#include <QIODevice>
#include <QMimeData>

const QString ElementClipboard::kMimeType = QStringLiteral("application/x-korvi-skin-elements");

namespace {

constexpr quint32 kMagic = 0x4B534B45; // "KSKE"
constexpr quint16 kVersion = 1;
// Deeper than any skin nests; data deeper than this is not ours.
constexpr int kDeepest = 64;
const QByteArray kLineEnd = QByteArrayLiteral("\r\n");

void writeElement(QDataStream &out, const clsElement &element)
{
    out << element.ElementType() << element.strName() << element.ElementKey();
    const clsProperties &props = element.Properties();
    out << qint32(props.Count());
    for (int i = 0; i < props.Count(); ++i)
        out << props.keyAt(i).toByteArray() << props.valueAt(i).toByteArray();
    out << qint32(element.subElementCount());
    if (element.subElementCount() > 0) {
        for (const clsElement *child : element.SubElements())
            writeElement(out, *child);
    }
}

// Keys are put back exactly: they were unique where they were copied from.
std::unique_ptr<clsElement> readElement(QDataStream &in, int depth)
{
    QByteArray type, name, key;
    qint32 count = 0;
    in >> type >> name >> key >> count;
    if (in.status() != QDataStream::Ok || depth > kDeepest || count < 0)
        return nullptr;
    auto element = std::make_unique<clsElement>();
    element->setElementType(type);
    element->setStrName(name);
    element->setElementKey(key);
    for (qint32 i = 0; i < count; ++i) {
        QByteArray propertyKey, value;
        in >> propertyKey >> value;
        if (in.status() != QDataStream::Ok || element->Properties().ItemExist(propertyKey))
            return nullptr;
        element->Properties().Insert(i, propertyKey, value);
    }
    in >> count;
    if (in.status() != QDataStream::Ok || count < 0)
        return nullptr;
    for (qint32 i = 0; i < count; ++i) {
        std::unique_ptr<clsElement> child = readElement(in, depth + 1);
        if (!child || element->SubElements().ItemExist(child->keyView()))
            return nullptr;
        element->SubElements().Insert(i, std::move(child));
    }
    return element;
}

QByteArray privateForm(const clsElement &element, bool isBlock)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << kMagic << kVersion << qint32(1) << isBlock;
    writeElement(out, element);
    return bytes;
}

bool readPrivateForm(const QByteArray &bytes, ElementClipboard::Pasted &pasted)
{
    QDataStream in(bytes);
    quint32 magic = 0;
    quint16 version = 0;
    qint32 count = 0;
    in >> magic >> version >> count;
    if (magic != kMagic || version != kVersion || count < 0)
        return false;
    for (qint32 i = 0; i < count; ++i) {
        bool isBlock = false;
        in >> isBlock;
        std::unique_ptr<clsElement> element = readElement(in, 0);
        if (!element)
            return false;
        (isBlock ? pasted.blocks : pasted.objects).push_back(std::move(element));
    }
    return true;
}

// The lines a skin file would hold: those that read back as the element when
// it can be written so, else what Save writes for it.
QByteArray textOf(const clsElement &element, const SkinCodec &codec)
{
    QString problem;
    const QByteArray exact = ElementText(kLineEnd, {}, codec).of(element, problem);
    if (problem.isEmpty())
        return exact;
    clsKorviInterface scratch;
    scratch.Layers().Insert(0, ElementClipboard::copyOf(element));
    return WriteElements(scratch.Layers(), 0) + kLineEnd;
}

// Objects need a block around them to be read: the text is read after the
// opening line of one, which then holds the objects that came before any
// block of the text's own.
void readText(const QByteArray &text, ElementClipboard::Pasted &pasted)
{
    clsKorviInterface scratch;
    try {
        UiFileReader reader(scratch, false);
        reader.readBytes("<LAYER clipboard>" + kLineEnd + text, QStringLiteral("the clipboard"));
    } catch (const SkinReadError &error) {
        pasted.problem = QStringLiteral("Line %1: %2").arg(error.line() - 1).arg(error.message());
        return;
    }
    const clsElements &layers = scratch.Layers();
    const clsElement *around = layers.at(0);
    if (around->subElementCount() > 0) {
        for (const clsElement *object : around->SubElements())
            pasted.objects.push_back(ElementClipboard::copyOf(*object));
    }
    for (int i = 1; i < layers.Count(); ++i)
        pasted.blocks.push_back(ElementClipboard::copyOf(*layers.at(i)));
    pasted.leftOut = scratch.Templates().Count() + scratch.Fonts().Count() + scratch.Headers().Count();
}

} // namespace

std::unique_ptr<clsElement> ElementClipboard::copyOf(const clsElement &element)
{
    QByteArray bytes;
    {
        QDataStream out(&bytes, QIODevice::WriteOnly);
        writeElement(out, element);
    }
    QDataStream in(bytes);
    return readElement(in, 0);
}

std::unique_ptr<QMimeData> ElementClipboard::dataFor(const clsElement &element, bool isBlock, const SkinCodec &codec)
{
    auto data = std::make_unique<QMimeData>();
    data->setData(kMimeType, privateForm(element, isBlock));
    data->setText(codec.toText(textOf(element, codec)));
    return data;
}

ElementClipboard::Pasted ElementClipboard::elementsIn(const QMimeData &data, const SkinCodec &codec)
{
    Pasted pasted;
    if (data.hasFormat(kMimeType) && readPrivateForm(data.data(kMimeType), pasted))
        return pasted;
    pasted = Pasted();
    if (data.hasText()) {
        const QString text = data.text();
        const std::optional<QByteArray> bytes = codec.toBytes(text);
        if (!bytes) {
            pasted.problem = codec.refusal(text);
            return pasted;
        }
        readText(*bytes, pasted);
    }
    if (pasted.problem.isEmpty() && pasted.blocks.empty() && pasted.objects.empty())
        pasted.problem = QStringLiteral("The clipboard holds no layers or objects.");
    return pasted;
}
