// SPDX-License-Identifier: MIT
#include "ChangeFinder.h"

#include "AsciiCase.h"
#include "DocumentMatch.h"
#include "ElementText.h"
#include "InOrderRun.h"
#include "KeyIndex.h"
#include "NameWord.h"
#include "SourceElement.h"
#include "UiLineScanner.h"
#include "ValueSpelling.h"
#include "clsKorviInterface.h"

#include <QHash>
#include <algorithm>

namespace {

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

QString described(const SkinCodec &codec, const clsElement &element)
{
    return QStringLiteral("%1 %2").arg(codec.toText(element.ElementType()), codec.toText(element.strName()));
}

// Where an attribute added to a tag line goes: after its last attribute,
// before the ">" or "/>" that ends the tag, or before a second tag.
qsizetype attributeInsertionPoint(const QByteArray &bytes, const SourceScan::Line &tag)
{
    qsizetype at = tag.stop;
    const auto backOverBlanks = [&] {
        while (at > tag.begin && isBlank(bytes.at(at - 1)))
            --at;
    };
    if (at >= tag.end || bytes.at(at) == '<') {
        backOverBlanks();
        if (at > tag.begin && bytes.at(at - 1) == '>')
            --at;
    }
    if (at < tag.end && bytes.at(at) == '>') {
        if (at > tag.begin && bytes.at(at - 1) == '/')
            --at;
        backOverBlanks();
    }
    return at;
}

// A CR in a value is where a quoted value ran on to the next line: it is
// written as the file's own line end, which reads back as that CR.
QByteArray overLines(QByteArray text, const QByteArray &lineEnd)
{
    if (lineEnd != "\r" && text.contains('\r'))
        text.replace("\r", lineEnd);
    return text;
}

} // namespace

ChangeFinder::ChangeFinder(const clsKorviInterface &document, int fileForNewElements)
    : mDocument(document)
    , mFileForNewElements(fileForNewElements)
    , mCarried(document)
{
}

std::vector<FileChanges> ChangeFinder::find()
{
    const SkinSources &sources = mDocument.Sources();
    mChanges.assign(size_t(sources.count() + 1), FileChanges());
    mClaimed.assign(size_t(sources.count() + 1), {});
    mMoved.assign(size_t(sources.count() + 1), {});
    mLineEnds.assign(size_t(sources.count() + 1), QByteArray());
    for (int f = 1; f <= sources.count(); ++f) {
        mChanges[size_t(f)].file = f;
        mChanges[size_t(f)].path = sources.file(f)->path();
        mClaimed[size_t(f)].assign(size_t(sources.file(f)->elementCount()), false);
        mMoved[size_t(f)].assign(size_t(sources.file(f)->elementCount()), false);
    }
    const std::pair<const clsElements *, Collection> collections[] = {
        { &mDocument.Headers(), Collection::Headers },
        { &mDocument.Templates(), Collection::Templates },
        { &mDocument.Fonts(), Collection::Fonts },
        { &mDocument.Layers(), Collection::Layers },
    };
    for (const auto &[elements, collection] : collections)
        visitCollection(*elements, collection);
    if (!mNewHeaders.isEmpty()) {
        FileChanges &changes = changesOf(mFileForNewElements);
        const QByteArray &bytes = mDocument.Sources().file(mFileForNewElements)->bytes();
        const QByteArray &lineEnd = lineEndOf(mFileForNewElements);
        changes.edits.insert(bytes.size(), lineBreakBefore(bytes, bytes.size(), lineEnd) + "<header>" + lineEnd
                                               + mNewHeaders + "</header>" + lineEnd);
    }
    std::vector<FileChanges> found;
    // Problems that belong to no file come first.
    if (!mChanges.front().problems.isEmpty())
        found.push_back(std::move(mChanges.front()));
    for (int f = 1; f <= sources.count(); ++f) {
        removeUnclaimed(f);
        FileChanges &changes = mChanges[size_t(f)];
        if (changes.changeCount > 0 || !changes.problems.isEmpty())
            found.push_back(std::move(changes));
    }
    return found;
}

// An element that still stands, as read, in the block it was read in (the
// top of its file: kNone), and whose record no other element holds yet.
bool ChangeFinder::standsIn(const clsElement &element, int file, quint32 parentRecord) const
{
    const SkinSourceFile *source = mDocument.Sources().file(file);
    if (!source || element.sourceFile() != file || element.sourceRecord() >= quint32(source->elementCount()))
        return false;
    return !mClaimed[size_t(file)][element.sourceRecord()] && source->element(element.sourceRecord()).parent == parentRecord;
}

// Of the siblings that still stand in the block they were read in, as many
// as keep the order in which they were read (records are numbered in reading
// order) stay where they are and claim their records. The others are new to
// the block, moved within it, or a second element holding one record: each
// is written where it now stands (with its own lines when it only moved), so
// that the file reads back in the document's order. `onlyFile` 0: each
// sibling in its own file (the top).
std::vector<bool> ChangeFinder::keepInPlace(const std::vector<const clsElement *> &siblings, int onlyFile,
                                            quint32 parentRecord)
{
    std::vector<bool> kept(siblings.size(), false);
    std::vector<std::pair<int, std::vector<size_t>>> byFile;
    for (size_t i = 0; i < siblings.size(); ++i) {
        const int file = onlyFile ? onlyFile : siblings[i]->sourceFile();
        if (!standsIn(*siblings[i], file, parentRecord))
            continue;
        mClaimed[size_t(file)][siblings[i]->sourceRecord()] = true;
        auto group = std::find_if(byFile.begin(), byFile.end(), [file](const auto &g) { return g.first == file; });
        if (group == byFile.end())
            group = byFile.insert(byFile.end(), { file, {} });
        group->second.push_back(i);
    }
    for (const auto &[file, positions] : byFile) {
        std::vector<quint32> records;
        records.reserve(positions.size());
        for (const size_t i : positions)
            records.push_back(siblings[i]->sourceRecord());
        if (std::is_sorted(records.begin(), records.end())) {
            for (const size_t i : positions)
                kept[i] = true;
            continue;
        }
        // Something moved. Of the longest runs still in order, the one that
        // keeps most of the siblings that could not take their own lines
        // along, so that those that move take them as far as can be: when
        // two swapped places, the one the user moved goes, not the other.
        const qint64 each = qint64(positions.size()) + 1;
        std::vector<qint64> weights;
        weights.reserve(positions.size());
        for (const size_t i : positions)
            weights.push_back(each + (mCarried.canCarry(*siblings[i]) ? 0 : 1));
        const std::vector<bool> inRun = InOrderRun::heaviest(records, weights);
        for (size_t k = 0; k < positions.size(); ++k) {
            kept[positions[k]] = inRun[k];
            if (!inRun[k])
                mClaimed[size_t(file)][records[k]] = false;
        }
    }
    return kept;
}

FileChanges &ChangeFinder::changesOf(int file)
{
    return mChanges[size_t(file)];
}

const QByteArray &ChangeFinder::lineEndOf(int file)
{
    QByteArray &lineEnd = mLineEnds[size_t(file)];
    if (lineEnd.isEmpty())
        lineEnd = SourceScan::dominantLineEnd(mDocument.Sources().file(file)->bytes());
    return lineEnd;
}

// A new line inserted at the end of a file that does not end its last line
// first ends that line.
QByteArray ChangeFinder::lineBreakBefore(const QByteArray &bytes, qsizetype at, const QByteArray &lineEnd) const
{
    return at == bytes.size() && !bytes.isEmpty() && !SourceScan::endsWithLineEnd(bytes) ? lineEnd : QByteArray();
}

void ChangeFinder::visit(const clsElement &element)
{
    const int file = element.sourceFile();
    const SkinSourceFile &source = *mDocument.Sources().file(file);
    const ElementSource &record = source.element(element.sourceRecord());
    // Most elements have not been touched since they took their record. Of
    // the others, most are as read again (an edit undone), and said so by
    // their tag line alone: a quick look, before the element is read again in
    // full.
    const bool unchanged = !element.changedSinceSource()
        || (record.moreLines == ElementSource::kNone && mTagLineCheck.sameAsRead(source.bytes(), record.tagLine, element));
    FileChanges &changes = changesOf(file);
    if (!unchanged && mRewriteTags && element.ElementType() != "SCRIPT") {
        rewriteTag(element, SourceElement::read(source, element.sourceRecord()), changes);
    } else if (!unchanged) {
        const SourceElement read = SourceElement::read(source, element.sourceRecord());
        const int before = changes.changeCount;
        compareTag(element, read, changes);
        compareProperties(element, read, changes);
        if (changes.changeCount > before) {
            // However many of its values changed, an element edited is one
            // change to the user: a drag sets "x" and "y" at once.
            changes.changeCount = before + 1;
            changes.edited.push_back(&element);
            if (record.moreLines != ElementSource::kNone || element.ElementType() == "SCRIPT")
                changes.onlyTagLines = false;
        }
    }
    if (element.subElementCount() > 0)
        visitChildren(element, changes);
}

// A new or moved child goes right after the last line of the sibling before
// it that stays (its closing tag, when it has one), indented like it; when it
// comes first, before the first one that stays; in a block with none, before
// the closing tag or after the block's last line.
void ChangeFinder::visitChildren(const clsElement &element, FileChanges &changes)
{
    const int file = changes.file;
    std::vector<const clsElement *> children;
    children.reserve(size_t(element.subElementCount()));
    for (const clsElement *child : element.SubElements())
        children.push_back(child);
    const std::vector<bool> kept = keepInPlace(children, file, element.sourceRecord());
    const clsElement *previous = nullptr;
    const clsElement *first = nullptr;
    for (size_t i = 0; i < children.size() && !first; ++i) {
        if (kept[i])
            first = children[i];
    }
    for (size_t i = 0; i < children.size(); ++i) {
        if (kept[i]) {
            visit(*children[i]);
            previous = children[i];
        } else if (previous) {
            writeAnew(*children[i], file, endOfElement(*previous, file), indentOf(*previous));
        } else if (first) {
            writeAnew(*children[i], file, tagLineOf(*first), indentOf(*first));
        } else {
            const ElementSource &record = mDocument.Sources().file(file)->element(element.sourceRecord());
            const qsizetype at = record.closingLine != ElementSource::kNone ? qsizetype(record.closingLine)
                                                                            : endOfContent(element, file);
            writeAnew(*children[i], file, at, indentOf(element) + '\t');
        }
    }
}

// Top-level elements stay where they were read, in each file, as children of
// a block do; a new one goes after the one before it of its file and
// collection, or before the first one, or else at the end of the file that
// receives new elements.
void ChangeFinder::visitCollection(const clsElements &elements, Collection collection)
{
    std::vector<const clsElement *> list;
    list.reserve(size_t(elements.Count()));
    for (const clsElement *element : elements)
        list.push_back(element);
    const std::vector<bool> kept = keepInPlace(list, 0, ElementSource::kNone);
    QHash<int, const clsElement *> previous;
    QHash<int, const clsElement *> first;
    for (size_t i = 0; i < list.size(); ++i) {
        if (kept[i] && !first.contains(list[i]->sourceFile()))
            first.insert(list[i]->sourceFile(), list[i]);
    }
    for (size_t i = 0; i < list.size(); ++i) {
        const clsElement &element = *list[i];
        if (kept[i]) {
            visit(element);
            previous.insert(element.sourceFile(), &element);
            continue;
        }
        const int file = DocumentMatch::isFromAFile(mDocument, element) ? element.sourceFile() : mFileForNewElements;
        if (const clsElement *before = previous.value(file))
            writeAnew(element, file, endOfElement(*before, file), indentOf(*before));
        else if (const clsElement *after = first.value(file))
            writeAnew(element, file, tagLineOf(*after), indentOf(*after));
        else
            addTopLevel(element, collection, file);
    }
}

void ChangeFinder::writeAnew(const clsElement &element, int file, qsizetype at, const QByteArray &indent)
{
    FileChanges &changes = changesOf(file);
    const QByteArray &bytes = mDocument.Sources().file(file)->bytes();
    // After the last line, whether or not it ends.
    at = qMin(at, bytes.size());
    const QByteArray &lineEnd = lineEndOf(file);
    // What moved within its file keeps its own lines as far as they still say what it is.
    QString problem;
    const QByteArray text = lineBreakBefore(bytes, at, lineEnd) + mCarried.textOf(element, file, lineEnd, indent, problem);
    if (!problem.isEmpty())
        changes.problems << problem;
    noteMoved(element);
    ++changes.changeCount;
    changes.onlyTagLines = false;
    changes.edits.insert(at, text);
}

// An element written anew that was read from a file: its old lines go with
// it, as part of the same change.
void ChangeFinder::noteMoved(const clsElement &element)
{
    if (DocumentMatch::isFromAFile(mDocument, element))
        mMoved[size_t(element.sourceFile())][element.sourceRecord()] = true;
}

qsizetype ChangeFinder::tagLineOf(const clsElement &element) const
{
    return mDocument.Sources().file(element.sourceFile())->element(element.sourceRecord()).tagLine;
}

QByteArray ChangeFinder::indentOf(const clsElement &element) const
{
    return SourceScan::indentationAt(mDocument.Sources().file(element.sourceFile())->bytes(), tagLineOf(element));
}

// The end of the last line of an element read from the file, its closing
// tag included.
qsizetype ChangeFinder::endOfElement(const clsElement &element, int file) const
{
    const SkinSourceFile &source = *mDocument.Sources().file(file);
    const ElementSource &record = source.element(element.sourceRecord());
    qsizetype end = endOfContent(element, file);
    if (record.closingLine != ElementSource::kNone)
        end = qMax(end, SourceScan::scanLine(source.bytes(), record.closingLine).next);
    return end;
}

void ChangeFinder::compareTag(const clsElement &element, const SourceElement &read, FileChanges &changes)
{
    const QByteArray &bytes = mDocument.Sources().file(changes.file)->bytes();
    const QByteArray word = bytes.mid(read.tag.wordBegin, read.tag.wordEnd - read.tag.wordBegin);
    if (AsciiCase::uppered(word) != element.ElementType()) {
        changes.onlyTagLines = false;
        if (!NameWord::isNameWord(element.ElementType()))
            changes.problems << QStringLiteral("%1: the type is not one word").arg(described(mDocument.codec(), element));
        changes.edits.replace(read.tag.wordBegin, read.tag.wordEnd, element.ElementType());
        ++changes.changeCount;
    }
    if (element.ElementType() == "VAR" || AsciiCase::uppered(word) == "VAR")
        return;
    const QByteArray name = bytes.mid(read.tag.nameBegin, read.tag.nameEnd - read.tag.nameBegin);
    if (name == element.strName())
        return;
    changes.onlyTagLines = false;
    const QString problem = NameWord::problemWithName(mDocument.codec().toText(element.strName()));
    if (!problem.isEmpty())
        changes.problems << QStringLiteral("%1: %2").arg(described(mDocument.codec(), element), problem);
    if (read.tag.nameBegin == read.tag.nameEnd)
        changes.edits.insert(read.tag.wordEnd, ' ' + element.strName());
    else
        changes.edits.replace(read.tag.nameBegin, read.tag.nameEnd, element.strName());
    ++changes.changeCount;
}

// Properties are matched in order. Those the same at the start and at the
// end (plain key and value) are unchanged; keys may have been numbered anew
// since reading ("x[1]" may come back as "x[0]"), so they are compared
// without their numbers. In between, each is matched by its key, or else by
// the next one read under the same plain key: a different value is a changed
// value. One read and no longer there is removed; one that is new, and every
// one after it, is written at the end, so that the file reads back in the
// document's order.
void ChangeFinder::compareProperties(const clsElement &element, const SourceElement &read, FileChanges &changes)
{
    const clsProperties &props = element.Properties();
    const int n = props.Count();
    const int m = int(read.properties.size());
    const auto same = [&](int i, int j) {
        return props.valueAt(i) == read.properties[size_t(j)].value
            && KeyIndex::sameKey(clsProperty::idKeyView(props.keyAt(i)), clsProperty::idKeyView(read.properties[size_t(j)].key));
    };
    int prefix = 0;
    while (prefix < n && prefix < m && same(prefix, prefix))
        ++prefix;
    int suffix = 0;
    while (suffix < n - prefix && suffix < m - prefix && same(n - 1 - suffix, m - 1 - suffix))
        ++suffix;
    if (prefix == n && prefix == m)
        return;
    std::vector<bool> kept(size_t(m), false);
    for (int j = 0; j < prefix; ++j)
        kept[size_t(j)] = true;
    QHash<QByteArray, int> byKey;
    for (int j = prefix; j < m - suffix; ++j)
        byKey.insert(AsciiCase::lowered(read.properties[size_t(j)].key), j);
    std::vector<int> added;
    int last = prefix - 1;
    for (int i = prefix; i < n - suffix; ++i) {
        int j = byKey.value(AsciiCase::lowered(props.keyAt(i).toByteArray()), -1);
        if (j <= last) {
            j = -1;
            const QByteArrayView plain = clsProperty::idKeyView(props.keyAt(i));
            for (int k = last + 1; k < m - suffix && j < 0; ++k) {
                if (KeyIndex::sameKey(clsProperty::idKeyView(read.properties[size_t(k)].key), plain))
                    j = k;
            }
        }
        if (added.empty() && j > last) {
            kept[size_t(j)] = true;
            last = j;
            if (props.valueAt(i) != read.properties[size_t(j)].value)
                changeValue(element, read, size_t(j), props.valueAt(i).toByteArray(), changes);
        } else {
            added.push_back(i);
        }
    }
    // After a new property, the ones that end the list are new too.
    for (int k = 0; k < suffix; ++k) {
        if (added.empty())
            kept[size_t(m - suffix + k)] = true;
        else
            added.push_back(n - suffix + k);
    }
    for (int j = 0; j < m; ++j) {
        if (!kept[size_t(j)])
            removeProperty(read, size_t(j), changes);
    }
    if (!added.empty())
        addProperties(element, read, added, changes);
}

void ChangeFinder::changeValue(const clsElement &element, const SourceElement &read, size_t index, const QByteArray &value,
                               FileChanges &changes)
{
    const SourceElement::Property &property = read.properties[index];
    const QByteArray &bytes = mDocument.Sources().file(changes.file)->bytes();
    ++changes.changeCount;
    if (property.isScriptLine) {
        if (!ValueSpelling::readsBackAsScriptLine(value))
            changes.problems << QStringLiteral("%1: the script line %2 does not read back as it is")
                                    .arg(described(mDocument.codec(), element), mDocument.codec().toText(value));
        changes.edits.replace(property.line.textBegin, property.line.textEnd, value);
        return;
    }
    const SourceScan::Attribute &a = property.attribute;
    if (value == clsProperty::noValue()) {
        // A flag: the key alone.
        changes.edits.replace(a.keyEnd, a.valueEnd, {});
        return;
    }
    if (!ValueSpelling::readsBack(value)) {
        changes.problems << QStringLiteral("%1: the value %2 of %3 does not read back as it is")
                                .arg(described(mDocument.codec(), element), mDocument.codec().toText(value),
                                     mDocument.codec().toText(property.key));
    }
    // A value that does not end in a quote ends at the first byte that is no
    // value character: one that would go on is kept apart by a blank.
    const qsizetype after = a.hasValue ? a.valueEnd : a.keyEnd;
    QByteArray text = a.hasValue ? value : '=' + value;
    const bool quoted = value.endsWith('"') || value.endsWith('\'');
    if (!quoted && after < bytes.size()) {
        const unsigned char next = static_cast<unsigned char>(bytes.at(after));
        if (UiLineScanner::isValueChar(next) || next == '"' || next == '\'')
            text += ' ';
    }
    changes.edits.replace(a.hasValue ? a.valueBegin : a.keyEnd, after, overLines(text, lineEndOf(changes.file)));
}

// An attribute goes with one blank before it; a script line goes whole.
void ChangeFinder::removeProperty(const SourceElement &read, size_t index, FileChanges &changes)
{
    const SourceElement::Property &property = read.properties[index];
    ++changes.changeCount;
    if (property.isScriptLine) {
        removeLines(changes, property.line.begin, property.line.next);
        return;
    }
    const QByteArray &bytes = mDocument.Sources().file(changes.file)->bytes();
    qsizetype begin = property.attribute.keyBegin;
    if (begin > 0 && isBlank(bytes.at(begin - 1)))
        --begin;
    changes.edits.replace(begin, property.attribute.valueEnd, {});
}

// New attributes go at the end of the tag's attributes; a script's new lines
// go before its closing tag, or after its last line.
void ChangeFinder::addProperties(const clsElement &element, const SourceElement &read, const std::vector<int> &added,
                                 FileChanges &changes)
{
    const QByteArray &bytes = mDocument.Sources().file(changes.file)->bytes();
    const clsProperties &props = element.Properties();
    changes.changeCount += int(added.size());
    QString problem;
    QByteArray text;
    if (element.ElementType() == "SCRIPT") {
        qsizetype at = read.tag.next;
        QByteArray indent = SourceScan::indentationAt(bytes, read.tag.begin) + '\t';
        for (const SourceElement::Property &property : read.properties) {
            if (property.isScriptLine) {
                at = qMax(at, property.line.next);
                indent = SourceScan::indentationAt(bytes, property.line.begin);
            }
        }
        if (read.closingBegin >= 0)
            at = read.closingBegin;
        const QByteArray &lineEnd = lineEndOf(changes.file);
        text = lineBreakBefore(bytes, at, lineEnd);
        for (const int i : added) {
            const QByteArray line = props.valueAt(i).toByteArray();
            if (!ValueSpelling::readsBackAsScriptLine(line) || AsciiCase::lowered(clsProperty::idKeyOf(props.keyAt(i))) != "scriptline")
                problem = QStringLiteral("%1: the script line %2 does not read back as it is").arg(described(mDocument.codec(), element), mDocument.codec().toText(line));
            text += indent + line + lineEnd;
        }
        if (!problem.isEmpty())
            changes.problems << problem;
        changes.edits.insert(at, text);
        return;
    }
    // After the last attribute read: a tag that takes no element of its own
    // (such as "<header x=1>") may have given the element its last ones.
    qsizetype at = attributeInsertionPoint(bytes, read.tag);
    if (!read.properties.empty() && !read.properties.back().isScriptLine
        && read.properties.back().attribute.keyBegin > read.tag.end) {
        const SourceScan::Line line = SourceScan::scanLine(bytes, SourceScan::lineStartOf(bytes, read.properties.back().attribute.keyBegin));
        at = attributeInsertionPoint(bytes, line);
    }
    for (const int i : added) {
        text += ElementText::attribute(props.keyAt(i), props.valueAt(i), mDocument.codec(), problem);
        if (!problem.isEmpty()) {
            changes.problems << QStringLiteral("%1: %2").arg(described(mDocument.codec(), element), problem);
            return;
        }
    }
    // A "/" right after a value would become part of it.
    if (at < bytes.size() && bytes.at(at) == '/')
        text += ' ';
    changes.edits.insert(at, overLines(text, lineEndOf(changes.file)));
}

// The end of the last line an element and its children were read from,
// its closing tag not included.
qsizetype ChangeFinder::endOfContent(const clsElement &element, int file) const
{
    const SkinSourceFile &source = *mDocument.Sources().file(file);
    const QByteArray &bytes = source.bytes();
    const ElementSource &record = source.element(element.sourceRecord());
    qsizetype end = SourceScan::scanLine(bytes, record.tagLine).next;
    for (const quint32 line : source.moreLines(element.sourceRecord()))
        end = qMax(end, SourceScan::scanLine(bytes, line).next);
    if (element.subElementCount() == 0)
        return end;
    for (const clsElement *child : element.SubElements()) {
        if (child->sourceFile() == file && DocumentMatch::isFromAFile(mDocument, *child)
            && source.element(child->sourceRecord()).parent == element.sourceRecord())
            end = qMax(end, endOfElement(*child, file));
    }
    return end;
}

// A new layer, template, font type or header variable is added at the end of
// the file that receives new elements.
void ChangeFinder::addTopLevel(const clsElement &element, Collection collection, int file)
{
    if (!mDocument.Sources().file(file)) {
        mChanges.front().problems << QStringLiteral("%1 is new, and no file is to receive it").arg(described(mDocument.codec(), element));
        return;
    }
    FileChanges &changes = changesOf(file);
    const QByteArray &bytes = mDocument.Sources().file(file)->bytes();
    const QByteArray &lineEnd = lineEndOf(file);
    QString problem;
    noteMoved(element);
    ++changes.changeCount;
    changes.onlyTagLines = false;
    if (collection == Collection::Headers) {
        mNewHeaders += ElementText(lineEnd, "\t", mDocument.codec()).of(element, problem);
    } else {
        const QByteArray text = ElementText(lineEnd, {}, mDocument.codec()).of(element, problem);
        changes.edits.insert(bytes.size(), lineBreakBefore(bytes, bytes.size(), lineEnd) + text);
    }
    if (!problem.isEmpty())
        changes.problems << problem;
}

// The reader's line after the file's last one begins past its end: a last
// line without a line end is taken away up to the end.
void ChangeFinder::removeLines(FileChanges &changes, qsizetype begin, qsizetype next)
{
    changes.edits.replace(begin, qMin(next, mDocument.Sources().file(changes.file)->bytes().size()), {});
}

// Elements the document no longer holds: each takes exactly its own lines,
// its tag line, its script lines and its closing tag. One with its block
// gone too is part of that removal.
void ChangeFinder::removeUnclaimed(int file)
{
    const SkinSourceFile &source = *mDocument.Sources().file(file);
    const std::vector<bool> &claimed = mClaimed[size_t(file)];
    FileChanges &changes = changesOf(file);
    for (quint32 r = 0; r < claimed.size(); ++r) {
        if (claimed[r])
            continue;
        changes.onlyTagLines = false;
        const SourceElement read = SourceElement::read(source, r);
        removeLines(changes, read.tag.begin, read.tag.next);
        for (const SourceElement::Property &property : read.properties) {
            if (property.isScriptLine)
                removeLines(changes, property.line.begin, property.line.next);
        }
        if (read.closingBegin >= 0)
            removeLines(changes, read.closingBegin, read.closingNext);
        const quint32 parent = source.element(r).parent;
        if ((parent == ElementSource::kNone || claimed[parent]) && !mMoved[size_t(file)][r])
            ++changes.changeCount;
    }
}

// The element's tag written anew in the writer's layout ("<TYPE name key=value
// FLAG>"), from its "<" to the end of the last line it takes; what stands
// before the "<" and the line end stay. A value left empty before another
// attribute is ended by a ";", which the reader passes over, since the next
// key would otherwise be read as its value.
void ChangeFinder::rewriteTag(const clsElement &element, const SourceElement &read, FileChanges &changes)
{
    FileChanges found;
    found.file = changes.file;
    compareTag(element, read, found);
    compareProperties(element, read, found);
    if (found.changeCount == 0)
        return;
    // One change for the element, as when its values are rewritten in place.
    ++changes.changeCount;
    changes.onlyTagLines = false;
    changes.edited.push_back(&element);
    const QByteArray &bytes = mDocument.Sources().file(changes.file)->bytes();
    qsizetype begin = read.tag.wordBegin;
    while (begin > read.tag.begin && bytes.at(begin - 1) != '<')
        --begin;
    if (begin > read.tag.begin)
        --begin;
    const clsProperties &props = element.Properties();
    // A VAR takes its name from the tag before it, never from its own line.
    const bool isVar = element.ElementType() == "VAR";
    QByteArray text = '<' + element.ElementType() + ' ' + (isVar ? QByteArray() : element.strName());
    // The word after the tag word is always read as the name: where there is
    // none, a ";" stands in its place, so the first key stays a key.
    if (element.strName().isEmpty() && !isVar && props.Count() > 0)
        text += ';';
    {
        for (int i = 0; i < props.Count(); ++i) {
            text += ' ';
            const QByteArrayView key = clsProperty::idKeyView(props.keyAt(i));
            const QByteArrayView value = props.valueAt(i);
            if (value == clsProperty::noValue()) {
                text += AsciiCase::uppered(key.toByteArray());
                continue;
            }
            text += key;
            text += '=';
            text += value;
            if (value.isEmpty() && i + 1 < props.Count())
                text += ';';
        }
        // A "/" right after a value would become part of it.
        if (element.ElementType() == "USELAYER")
            text += props.Count() > 0 ? " />" : "/>";
        else
            text += '>';
    }
    changes.edits.replace(begin, read.tag.end, overLines(text, lineEndOf(changes.file)));
}
