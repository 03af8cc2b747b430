// SPDX-License-Identifier: MIT
#include "UiFileParser.h"

#include "ByteCopy.h"
#include "SkinReadError.h"
#include "clsKorviInterface.h"

#include <QFile>
#include <QFileInfo>
#include <cstring>

namespace {

// What a tag does, worked out once per tag word from its upper-case form.
UiFileParser::TagKind kindOfType(const QByteArray &type)
{
    using K = UiFileParser::TagKind;
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

UiFileParser::UiFileParser(clsKorviInterface &document, bool imported)
    : mDocument(document)
    , mImported(imported)
{
}

// The line that begins at `start` (which must be before the end), and where
// the line after it begins, which is at or past the end when there is none.
UiFileParser::LineSpan UiFileParser::lineAt(const QByteArray &bytes, qsizetype start, qsizetype &next)
{
    const char *d = bytes.constData();
    const qsizetype n = bytes.size();
    const qsizetype end = UiCharRuns::lineEnd(d + start, d + n) - d;
    next = end + 1;
    if (end < n && d[end] == '\r' && next < n && d[next] == '\n')
        ++next;
    return { start, end - start };
}

void UiFileParser::readBytes(const QByteArray &bytes, const QString &fileName)
{
    mBytes = bytes;
    mFileName = fileName;
    mSourceNumber = SkinSourceFile::fitsRecords(bytes.size())
        ? mDocument.Sources().add(fileName, bytes, mImported) : 0;
    mSource = mDocument.Sources().file(mSourceNumber);
    mOpenScript = nullptr;
    mNextLineStart = 0;
    mPastLastLine = false;
    mInHeader = false;
    mInScript = false;
    mCurrentBlock = nullptr;
    mCurrentElement = nullptr;
    mLastName = &mNoName;
    // Every line, then one more empty line after the last: the reader sees the
    // file as its lines each ended by CR LF, cut at every LF. Lines are cut as
    // they are read; a large skin has millions of them.
    for (mLineIndex = 0;; ++mLineIndex) {
        readLine(nextLine());
        if (mPastLastLine)
            break;
    }
    if (mSource)
        mSource->squeeze();
}

// The next line with its trailing CR. A line that ends with CR LF in the file
// already looks so there: the scanner needs the CR, and a byte after it that
// ends any run begun past the CR, as the LF does. Such a line is read where it
// stands when the scanner may read a block past it; other lines are copied
// into mLine. Most skins end their lines with CR LF, so few lines are copied.
QByteArrayView UiFileParser::nextLine()
{
    mLineStart = qMin(mNextLineStart, mBytes.size());
    if (mNextLineStart >= mBytes.size()) {
        loadNextLine(mLine);
    } else {
        const LineSpan span = lineAt(mBytes, mNextLineStart, mNextLineStart);
        const qsizetype crAt = span.offset + span.length;
        if (crAt + 2 + UiCharRuns::kSlack <= mBytes.size() && mBytes.at(crAt) == '\r' && mBytes.at(crAt + 1) == '\n')
            return QByteArrayView(mBytes.constData() + span.offset, span.length + 1);
        copyLine(span, mLine);
    }
    return QByteArrayView(mLine.constData(), mLine.size());
}

// Each line keeps one trailing CR; the extra line after the last one is empty.
void UiFileParser::loadNextLine(QByteArray &line)
{
    if (mNextLineStart >= mBytes.size()) {
        line.reserve(UiCharRuns::kSlack);
        line.resize(0);
        mPastLastLine = true;
        return;
    }
    copyLine(lineAt(mBytes, mNextLineStart, mNextLineStart), line);
}

// The copy has room for a block past its end, and the array's terminating
// NUL ends any run begun past its CR.
void UiFileParser::copyLine(LineSpan span, QByteArray &line) const
{
    line.reserve(span.length + 1 + UiCharRuns::kSlack);
    line.resize(span.length + 1);
    memcpy(line.data(), mBytes.constData() + span.offset, size_t(span.length));
    line[span.length] = '\r';
}

bool UiFileParser::takeNextLine(QByteArray &line)
{
    if (mPastLastLine)
        return false;
    ++mLineIndex;
    loadNextLine(line);
    return true;
}

void UiFileParser::readLine(QByteArrayView line)
{
    UiLineScanner scanner(line.data(), line.size(), mLine, this);
    scanner.position = scanner.NextTokenStart(1);
    if (scanner.position == 0)
        scanner.position = 1;
    if (scanner.atEnd() || scanner.current() != '<') {
        if (mInScript)
            readScriptLine(line);
        return;
    }
    readTag(scanner);
}

// Inside a script block every plain line is one script line, without its tabs
// and carriage returns and the blanks around it; empty lines count too.
void UiFileParser::readScriptLine(QByteArrayView line)
{
    mScriptText.resize(line.size());
    char *out = mScriptText.data();
    for (char c : line) {
        if (c != '\t' && c != '\r')
            *out++ = c;
    }
    const char *first = mScriptText.constData();
    const char *last = out;
    while (first < last && *first == ' ')
        ++first;
    while (last > first && last[-1] == ' ')
        --last;
    clsElement *element = receiver("a script line");
    element->Properties().Add(QByteArrayLiteral("ScriptLine"), QByteArrayView(first, last - first));
    recordMoreLine(element);
}

void UiFileParser::readTag(UiLineScanner &scanner)
{
    scanner.position += 1;
    const TagWord &tag = tagWordOf(scanner.ReadName());
    // One character after the tag word is passed over.
    scanner.position += 1;
    const bool isVar = (tag.kind == TagKind::Var);
    if (!isVar) {
        // The word after the tag is always the name, even when it looks like an
        // attribute: "<TEXT x=1>" names its element "x".
        QByteArrayView name = scanner.ReadName();
        if (name.endsWith('/'))
            name.chop(1);
        mLastName = &mNames.intern(name);
    }
    // A var tag has no name word: it takes the name of the tag before it.
    clsElements *destination = openElement(tag);
    // A new element is made once its attributes are known, so that it can hold
    // them in its own allocation; until then it is where the attributes go.
    readAttributes(scanner, isVar, destination != nullptr);
    if (destination) {
        // With its repeated keys numbered beforehand, the element can hold
        // even those in its own allocation.
        mAttributes.numberRepeatedKeys(mNumberingRoom);
        clsElement *element = destination->Add(*mLastName, tag.type, mAttributes);
        recordElement(tag, element);
        placeElement(tag, element);
    } else if (!mAttributes.isEmpty()) {
        mCurrentElement->Properties().AddPacked(mAttributes);
        recordMoreLine(mCurrentElement);
    }
}

// The element type and the meaning of a tag word. A skin uses a handful of tag
// words over and over: they are worked out once, and the elements share the
// bytes of each type instead of holding copies.
const UiFileParser::TagWord &UiFileParser::tagWordOf(QByteArrayView word)
{
    // Tags come in no order a processor could predict, so a search through
    // the words met in turn would end in a mispredicted branch at nearly every
    // tag: the words are found through a small hash table instead.
    size_t slot = tagWordSlot(word);
    for (; mTagWordTable[slot] != kNoTagWord; slot = (slot + 1) % mTagWordTable.size()) {
        const TagWord &known = mTagWords.at(mTagWordTable[slot]);
        if (known.spelling.size() == word.size()
            && ByteCopy::sameSmall(known.spelling.constData(), word.data(), size_t(word.size())))
            return known;
    }
    const QByteArray type = clsElement::upperAscii(word.toByteArray());
    // Past this many distinct words (only in odd files) the oldest is replaced.
    if (mTagWords.size() >= kMostTagWords) {
        mTagWords.removeFirst();
        mTagWordTable.fill(kNoTagWord);
        for (qsizetype i = 0; i < mTagWords.size(); ++i)
            placeTagWord(i);
    }
    mTagWords.append({ word.toByteArray(), type, kindOfType(type) });
    placeTagWord(mTagWords.size() - 1);
    return mTagWords.constLast();
}

size_t UiFileParser::tagWordSlot(QByteArrayView word)
{
    if (word.isEmpty())
        return 0;
    const quint32 print = quint32(word.size()) << 16 | quint32(quint8(word.front())) << 8 | quint8(word.back());
    // The table has 256 entries: the hash's top eight bits.
    return (print * 0x9e3779b1u) >> 24;
}

void UiFileParser::placeTagWord(qsizetype index)
{
    size_t slot = tagWordSlot(mTagWords.at(index).spelling);
    while (mTagWordTable[slot] != kNoTagWord)
        slot = (slot + 1) % mTagWordTable.size();
    mTagWordTable[slot] = quint8(index);
}

// Does what the tag does to the reader's state, and returns the collection
// that receives the new element when the tag makes one.
clsElements *UiFileParser::openElement(const TagWord &tag)
{
    switch (tag.kind) {
    case TagKind::Header:
        mInHeader = true;
        return nullptr;
    case TagKind::HeaderEnd:
        mInHeader = false;
        return nullptr;
    case TagKind::Var:
    case TagKind::Block:
        return mInHeader ? &mDocument.Headers() : &mDocument.Layers();
    case TagKind::Script:
        mInScript = true;
        return mCurrentBlock ? &mCurrentBlock->SubElements() : &mDocument.Layers();
    case TagKind::ScriptEnd:
        recordClosingLine(mOpenScript);
        mOpenScript = nullptr;
        mInScript = false;
        if (mCurrentElement == mCurrentBlock)
            mCurrentBlock = nullptr;
        mCurrentElement = nullptr;
        return nullptr;
    case TagKind::BlockEnd:
        recordClosingLine(mCurrentBlock);
        mCurrentBlock = nullptr;
        return nullptr;
    case TagKind::Template:
        // Templates and font types never become children, wherever they stand,
        // and neither open nor close a block.
        return &mDocument.Templates();
    case TagKind::FontType:
        return &mDocument.Fonts();
    case TagKind::Child:
        if (!mCurrentBlock)
            fail(QStringLiteral("the tag <%1> stands outside any block").arg(SkinCodec::wordText(tag.type)));
        return &mCurrentBlock->SubElements();
    }
    return nullptr;
}

// The new element becomes the current one; blocks, and a script outside any
// block, also become the current block.
void UiFileParser::placeElement(const TagWord &tag, clsElement *element)
{
    mCurrentElement = element;
    switch (tag.kind) {
    case TagKind::Var:
    case TagKind::Block:
        mCurrentBlock = element;
        break;
    case TagKind::Script:
        if (!mCurrentBlock)
            mCurrentBlock = element;
        break;
    case TagKind::Template:
    case TagKind::FontType:
        element->IsImported = mImported;
        break;
    default:
        break;
    }
}

// Gathers the tag line's attributes in mAttributes. They belong to the element
// the tag makes, or else to the current element, which must then exist.
void UiFileParser::readAttributes(UiLineScanner &scanner, bool isVar, bool makesElement)
{
    mAttributes.clear();
    if (scanner.position <= 0)
        return;
    // A var tag's attributes begin one character after the tag word, where a
    // name would have begun.
    if (isVar)
        scanner.position -= 1;
    scanner.position += 1;
    scanner.ReadAttributes(mAttributes, [&] {
        if (!makesElement)
            receiver("an attribute");
    });
}

clsElement *UiFileParser::receiver(const char *what) const
{
    if (!mCurrentElement)
        fail(QStringLiteral("%1 stands outside any element").arg(QLatin1String(what)));
    return mCurrentElement;
}

// The element's tag line, and the block it stands in; called before the
// element is placed, while the current block is the one it stands in.
void UiFileParser::recordElement(const TagWord &tag, clsElement *element)
{
    if (!mSource)
        return;
    const bool inBlock = tag.kind == TagKind::Child || (tag.kind == TagKind::Script && mCurrentBlock);
    const quint32 parent = inBlock ? mCurrentBlock->sourceRecord() : ElementSource::kNone;
    element->setSource(mSourceNumber, mSource->addElement(quint32(mLineStart), parent));
    if (tag.kind == TagKind::Script)
        mOpenScript = element;
}

// A line after the element's tag line that gave it properties: the element
// is still what its lines say.
void UiFileParser::recordMoreLine(clsElement *element)
{
    if (!mSource)
        return;
    mSource->addMoreLine(element->sourceRecord(), quint32(mLineStart));
    element->markSameAsSource();
}

void UiFileParser::recordClosingLine(const clsElement *element)
{
    if (mSource && element)
        mSource->setClosingLine(element->sourceRecord(), quint32(mLineStart));
}

void UiFileParser::fail(const QString &message) const
{
    if (mSource) {
        mSource->setErrorLine(mLineIndex + 1);
        mSource->squeeze();
    }
    throw SkinReadError(mFileName, mLineIndex + 1, message);
}
