#include "UiFileReader.h"

#include "SkinReadError.h"
#include "clsKorviInterface.h"

#include <QFile>
#include <QFileInfo>
#include <cstring>

namespace {

// What a tag does, worked out once per tag word from its upper-case form.
UiFileReader::TagKind kindOfType(const QByteArray &type)
{
    using K = UiFileReader::TagKind;
    if (type == "HEADER")
        return K::Header;
    if (type == "/HEADER")
        return K::HeaderEnd;
    if (type == "VAR")
        return K::Var;
    if (type == "LAYER" || type == "ELEMENT_TEMPLATE" || type == "OBSERVER" || type == "STATE")
        return K::Block;
    if (type == "SCRIPT")
        return K::Script;
    if (type == "/SCRIPT")
        return K::ScriptEnd;
    // "/observer" is not among them: it is read as a child element of its own.
    if (type == "/LAYER" || type == "/ELEMENT_TEMPLATE" || type == "/STATE")
        return K::BlockEnd;
    if (type == "TEMPLATE")
        return K::Template;
    if (type == "FONTTYPE")
        return K::FontType;
    return K::Child;
}

} // namespace

void ReadUiFile(clsKorviInterface &document, const QString &path, bool imported)
{
    UiFileReader(document, imported).readFile(path);
}

UiFileReader::UiFileReader(clsKorviInterface &document, bool imported)
    : mDocument(document)
    , mImported(imported)
{
}

void UiFileReader::readFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw SkinReadError(path, 0, file.errorString());
    readBytes(file.readAll(), path);
}

QVector<UiFileReader::LineSpan> UiFileReader::splitLines(const QByteArray &bytes)
{
    QVector<LineSpan> lines;
    const char *d = bytes.constData();
    const qsizetype n = bytes.size();
    lines.reserve(n / 40 + 1);
    qsizetype start = 0;
    while (start < n) {
        // memchr for the common LF case, then look for an earlier lone CR.
        const void *lf = memchr(d + start, '\n', size_t(n - start));
        qsizetype end = lf ? static_cast<const char *>(lf) - d : n;
        const void *cr = memchr(d + start, '\r', size_t(end - start));
        if (cr)
            end = static_cast<const char *>(cr) - d;
        lines.append({ start, end - start });
        if (end >= n)
            break;
        start = end + 1;
        if (d[end] == '\r' && start < n && d[start] == '\n')
            ++start;
    }
    return lines;
}

void UiFileReader::readBytes(const QByteArray &bytes, const QString &fileName)
{
    mBytes = bytes;
    mFileName = fileName;
    mLines = splitLines(mBytes);
    mInHeader = false;
    mInScript = false;
    mCurrentBlock = nullptr;
    mCurrentElement = nullptr;
    mLastName.clear();
    // Every line, then one more empty line after the last: the reader sees the
    // file as its lines each ended by CR LF, cut at every LF.
    for (mLineIndex = 0; mLineIndex <= mLines.size(); ++mLineIndex) {
        loadLine(mLineIndex, mLine);
        readLine();
    }
}

// Each line keeps one trailing CR; the extra line after the last one is empty.
void UiFileReader::loadLine(qsizetype index, QByteArray &line) const
{
    if (index >= mLines.size()) {
        line = QByteArray("");
        return;
    }
    const LineSpan &span = mLines.at(index);
    line.resize(span.length + 1);
    memcpy(line.data(), mBytes.constData() + span.offset, size_t(span.length));
    line[span.length] = '\r';
}

bool UiFileReader::takeNextLine(QByteArray &line)
{
    if (mLineIndex >= mLines.size())
        return false;
    ++mLineIndex;
    loadLine(mLineIndex, line);
    return true;
}

void UiFileReader::readLine()
{
    UiLineScanner scanner(mLine, this);
    scanner.position = scanner.NextTokenStart(1);
    if (scanner.position == 0)
        scanner.position = 1;
    if (scanner.atEnd() || scanner.current() != '<') {
        if (mInScript)
            readScriptLine();
        return;
    }
    readTag(scanner);
}

// Inside a script block every plain line is one script line, without its tabs
// and carriage returns and the blanks around it; empty lines count too.
void UiFileReader::readScriptLine()
{
    mScriptText.resize(mLine.size());
    char *out = mScriptText.data();
    for (char c : std::as_const(mLine)) {
        if (c != '\t' && c != '\r')
            *out++ = c;
    }
    const char *first = mScriptText.constData();
    const char *last = out;
    while (first < last && *first == ' ')
        ++first;
    while (last > first && last[-1] == ' ')
        --last;
    receiver("a script line")->Properties().Add(QByteArrayLiteral("ScriptLine"), QByteArrayView(first, last - first));
}

void UiFileReader::readTag(UiLineScanner &scanner)
{
    scanner.position += 1;
    const TagWord &tag = tagWordOf(scanner.view(scanner.readNameSpan()));
    // One character after the tag word is passed over.
    scanner.position += 1;
    const bool isVar = (tag.kind == TagKind::Var);
    if (!isVar) {
        // The word after the tag is always the name, even when it looks like an
        // attribute: "<TEXT x=1>" names its element "x".
        mLastName = scanner.ReadName();
        if (mLastName.endsWith('/'))
            mLastName.chop(1);
    }
    // A var tag has no name word: it takes the name of the tag before it.
    openElement(tag);
    readAttributes(scanner, isVar);
}

// The element type and the meaning of a tag word. A skin uses a handful of tag
// words over and over: they are worked out once, and the elements share the
// bytes of each type instead of holding copies.
const UiFileReader::TagWord &UiFileReader::tagWordOf(QByteArrayView word)
{
    for (const TagWord &known : std::as_const(mTagWords)) {
        if (known.spelling.size() == word.size()
            && (word.isEmpty()
                || (known.spelling.front() == word.front()
                    && memcmp(known.spelling.constData(), word.data(), size_t(word.size())) == 0)))
            return known;
    }
    const QByteArray type = clsElement::upperAscii(word.toByteArray());
    // Past this many distinct words (only in odd files) the oldest is replaced.
    if (mTagWords.size() >= 64)
        mTagWords.removeFirst();
    mTagWords.append({ word.toByteArray(), type, kindOfType(type) });
    return mTagWords.constLast();
}

void UiFileReader::openElement(const TagWord &tag)
{
    const QByteArray &type = tag.type;
    clsElements &topLevel = mInHeader ? mDocument.Headers() : mDocument.Layers();
    switch (tag.kind) {
    case TagKind::Header:
        mInHeader = true;
        break;
    case TagKind::HeaderEnd:
        mInHeader = false;
        break;
    case TagKind::Var:
    case TagKind::Block:
        mCurrentBlock = mCurrentElement = topLevel.Add(mLastName, type);
        break;
    case TagKind::Script:
        mInScript = true;
        if (!mCurrentBlock)
            mCurrentBlock = mCurrentElement = mDocument.Layers().Add(mLastName, type);
        else
            mCurrentElement = mCurrentBlock->SubElements().Add(mLastName, type);
        break;
    case TagKind::ScriptEnd:
        mInScript = false;
        if (mCurrentElement == mCurrentBlock)
            mCurrentBlock = nullptr;
        mCurrentElement = nullptr;
        break;
    case TagKind::BlockEnd:
        mCurrentBlock = nullptr;
        break;
    case TagKind::Template:
    case TagKind::FontType: {
        // Templates and font types never become children, wherever they stand,
        // and neither open nor close a block.
        clsElements &entries = tag.kind == TagKind::Template ? mDocument.Templates() : mDocument.Fonts();
        mCurrentElement = entries.Add(mLastName, type);
        mCurrentElement->IsImported = mImported;
        break;
    }
    case TagKind::Child:
        if (!mCurrentBlock)
            fail(QStringLiteral("the tag <%1> stands outside any block").arg(QString::fromLatin1(type)));
        mCurrentElement = mCurrentBlock->SubElements().Add(mLastName, type);
        break;
    }
}

void UiFileReader::readAttributes(UiLineScanner &scanner, bool isVar)
{
    if (scanner.position <= 0)
        return;
    // A var tag's attributes begin one character after the tag word, where a
    // name would have begun.
    if (isVar)
        scanner.position -= 1;
    scanner.position += 1;
    mAttributes.clear();
    clsElement *element = nullptr;
    scanner.ReadAttributes(mAttributes, [&] { element = receiver("an attribute"); });
    // All attributes of the line go to the same element: its storage grows once.
    if (element)
        element->Properties().AddPacked(mAttributes);
}

clsElement *UiFileReader::receiver(const char *what) const
{
    if (!mCurrentElement)
        fail(QStringLiteral("%1 stands outside any element").arg(QLatin1String(what)));
    return mCurrentElement;
}

void UiFileReader::fail(const QString &message) const
{
    throw SkinReadError(mFileName, mLineIndex + 1, message);
}
