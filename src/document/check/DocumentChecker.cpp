// SPDX-License-Identifier: MIT
#include "DocumentChecker.h"

#include "AsciiCase.h"
#include "KeyIndex.h"
#include "NodeKey.h"
#include "ProblemCodes.h"
#include "ProblemPlaces.h"
#include "ProblemText.h"
#include "SkinElementWalk.h"
#include "SourceLines.h"
#include "SourceScan.h"
#include "UiCharClasses.h"
#include "UiFileReader.h"
#include "clsKorviInterface.h"

#include <QStringBuilder>
#include <QVarLengthArray>
#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

using Severity = Problem::Severity;

namespace {

const QByteArray kNoValue = QByteArrayLiteral("<NOV>");

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

unsigned char classOf(char c)
{
    return UiCharClasses::table[static_cast<unsigned char>(c)];
}

bool isClosingBlockWord(const QByteArray &upper)
{
    return upper == "/LAYER" || upper == "/ELEMENT_TEMPLATE" || upper == "/STATE" || upper == "/SCRIPT";
}

bool isBlockType(const QByteArray &type)
{
    return type == "LAYER" || type == "ELEMENT_TEMPLATE" || type == "STATE";
}

// A tag line worth reading again exactly: one with a byte the scanner passes
// over or ends a value at (as "|", "$", ":" or any byte above 0x7F), a value
// whose first bytes are passed over ("x=.5"), or a quote other than those of a
// plain quoted value: one that opens right after the "=" of a key and closes
// on the same line before a blank or the end of the tag. Only such a value can
// run on over the next lines, or end where a flag follows at once.
bool needsExactScan(const char *begin, const char *end)
{
    for (const char *p = begin; p < end; ++p) {
        const char c = *p;
        if (c == '"' || c == '\'') {
            const bool afterKey = p - begin >= 2 && p[-1] == '=' && (classOf(p[-2]) & UiCharClasses::NameChar);
            const char *close = afterKey ? static_cast<const char *>(memchr(p + 1, c, size_t(end - p - 1))) : nullptr;
            if (!close || (close + 1 < end && !isBlank(close[1]) && close[1] != '>'))
                return true;
            p = close;
            continue;
        }
        if (!(classOf(c) & (UiCharClasses::TokenStart | UiCharClasses::ValueChar)) && !isBlank(c))
            return true;
        if (c == '=') {
            const char *q = p + 1;
            while (q < end && (*q == ' ' || *q == '\t'))
                ++q;
            if (q < end && !(classOf(*q) & UiCharClasses::TokenStart) && !isBlank(*q))
                return true;
        }
    }
    return false;
}

// The tag word as the reader reads it: from just after the "<", past bytes
// that start no token, the run of name characters.
QByteArrayView tagWord(const char *lt, const char *end)
{
    const char *p = lt + 1;
    while (p < end && !(classOf(*p) & UiCharClasses::TokenStart))
        ++p;
    const char *word = p;
    while (p < end && (classOf(*p) & UiCharClasses::NameChar))
        ++p;
    return QByteArrayView(word, p - word);
}

bool isNonAscii(char c)
{
    return static_cast<unsigned char>(c) >= 0x80;
}

bool hasNonAscii(QByteArrayView bytes)
{
    return std::any_of(bytes.begin(), bytes.end(), isNonAscii);
}

// The end of the word that begins at `at`: the first blank, "<" or ">".
qsizetype wordEndFrom(const QByteArray &bytes, qsizetype at, qsizetype end)
{
    while (at < end && !isBlank(bytes.at(at)) && bytes.at(at) != '<' && bytes.at(at) != '>')
        ++at;
    return at;
}

bool isPictureKey(const QByteArray &key)
{
    return key == "bmp" || key == "sprind" || key == "iconspr";
}

// A value as it can be written so that it reads back whole.
QByteArray quoted(const QByteArray &value)
{
    const char quote = value.contains('"') ? '\'' : '"';
    return quote + value + quote;
}

QString typeAndName(const SkinCodec &codec, const clsElement &element)
{
    return codec.toText(element.ElementType()) + QLatin1Char(' ') + codec.toText(element.strName());
}

} // namespace

DocumentChecker::DocumentChecker(const clsKorviInterface &document, ProblemPlaces &places)
    : mDocument(document)
    , mPlaces(places)
{
}

DocumentChecker::~DocumentChecker() = default;

QString DocumentChecker::shown(QByteArrayView bytes) const
{
    return ProblemText::shown(mDocument.codec(), bytes);
}

QVector<Problem> DocumentChecker::check(const QVector<SkinReadError> &readingErrors)
{
    begin();
    scanFiles(std::numeric_limits<qsizetype>::max());
    SkinElementWalk::forEach(mDocument, [this](const SkinElementWalk::Visit &visit) { this->visit(visit); });
    return finish(readingErrors);
}

void DocumentChecker::begin()
{
    mProblems.clear();
    mLineProblems.clear();
    mScanFile = 0;
    mScanAt = mScanStop = 0;
}

bool DocumentChecker::scanFiles(qsizetype budget)
{
    for (;;) {
        if (mScanAt < mScanStop)
            return scanFile(budget) && mScanFile >= mDocument.Sources().count();
        if (mScanFile >= mDocument.Sources().count())
            return true;
        if (mDocument.Sources().file(++mScanFile))
            startFile(mScanFile);
    }
}

void DocumentChecker::visit(const SkinElementWalk::Visit &visit)
{
    checkElement(visit);
    if (!mLineProblems.isEmpty())
        giveLineProblemsNodeKeys(visit);
}

QVector<Problem> DocumentChecker::finish(const QVector<SkinReadError> &readingErrors)
{
    checkCycles(mDocument.Templates(), "template", QStringLiteral("templates"), 'T');
    checkCycles(mDocument.Fonts(), "fonttype", QStringLiteral("font types"), 0);
    for (const SkinReadError &error : readingErrors) {
        Problem &problem = add(Severity::Error, ProblemCodes::ReadingError, {},
                               error.line() > 0
                                   ? QStringLiteral("reading stopped here: %1; the rest of the file is not read")
                                         .arg(error.message())
                                   : error.message());
        problem.file = error.file();
        problem.line = error.line();
    }
    return std::exchange(mProblems, {});
}

Problem &DocumentChecker::add(Severity severity, const QString &code, const QByteArray &nodeKey,
                              const QString &message)
{
    Problem problem;
    problem.severity = severity;
    problem.code = code;
    problem.nodeKey = nodeKey;
    problem.message = message;
    mProblems.append(problem);
    return mProblems.last();
}

void DocumentChecker::addOnLine(int fileNumber, qsizetype lineBegin, qsizetype at, Severity severity,
                                const QString &code, const QString &message)
{
    Problem &problem = add(severity, code, {}, message);
    mPlaces.placeAt(problem, fileNumber, at);
    mLineProblems[{ fileNumber, lineBegin }].append(mProblems.size() - 1);
}

void DocumentChecker::checkElement(const SkinElementWalk::Visit &visit)
{
    const clsElement &element = visit.element;
    const QByteArray type = element.ElementType();
    if (type == "SCRIPT") {
        checkScriptClosed(visit);
        return;
    }
    // "/OBSERVER" is no closing tag: an observer block keeps it as a child,
    // and writes it back so.
    if (type.startsWith('/') && type != "/OBSERVER") {
        Problem &problem = add(Severity::Warning, ProblemCodes::OrphanClosingTag, visit.nodeKey,
                               QStringLiteral("<%1> closes nothing: it is read as an object of type %1; remove it")
                                   .arg(shown(type)));
        mPlaces.placeAtElement(problem, element);
        return;
    }
    checkProperties(visit);
    if (element.IsList() || element.IsTemplate())
        checkElementTemplates(visit);
    if (element.IsUseLayer())
        checkUsedLayer(visit);
    checkDuplicateName(visit);
    checkClosingTag(visit);
}

// One pass over the element's properties: the links, and the keys written
// twice. Both link keys have eight letters, which most keys have not.
void DocumentChecker::checkProperties(const SkinElementWalk::Visit &visit)
{
    const clsProperties &props = visit.element.Properties();
    for (int i = 0; i < props.Count(); ++i) {
        const QByteArrayView key = props.keyAt(i);
        const QByteArrayView plain = clsProperty::idKeyView(key);
        if (plain.size() == 8 && KeyIndex::sameKey(plain, "template"))
            checkLink(visit, i, "template", mDocument.Templates(), ProblemCodes::UnknownTemplate, QStringLiteral("template"));
        else if (plain.size() == 8 && KeyIndex::sameKey(plain, "fonttype"))
            checkLink(visit, i, "fonttype", mDocument.Fonts(), ProblemCodes::UnknownFontType, QStringLiteral("font type"));
        else if (plain.size() != key.size())
            checkRepeatedKey(visit, i);
    }
}

// Every "template" property is followed in turn when a value is looked up,
// with its value taken as stored: a quoted name finds nothing.
void DocumentChecker::checkLink(const SkinElementWalk::Visit &visit, int index, QByteArrayView linkKey,
                                const clsElements &targets, const QString &code, const QString &what)
{
    const clsProperties &props = visit.element.Properties();
    const QByteArrayView name = props.valueAt(index);
    if (targets.Find(name))
        return;
    const QString key = shown(linkKey);
    QString message;
    if (name == kNoValue) {
        message = QStringLiteral("%1 is written without a name: it finds no %2").arg(key, what);
    } else {
        // Made by the thousand in a large skin: one allocation, no format.
        message = key % QLatin1Char('=') % shown(name) % QLatin1String(" names no ") % what
            % QLatin1String(" of the skin, so the values it would give are missing");
        const QByteArray unquoted = clsProperty::stringValueOf(name);
        if (unquoted != name && targets.Find(unquoted))
            message = QStringLiteral("%1=%2 names no %3: the quotes are read as part of the name; write %1=%4")
                          .arg(key, shown(name), what, shown(unquoted));
    }
    Problem &problem = add(Severity::Error, code, visit.nodeKey, message);
    mPlaces.placeAtElement(problem, visit.element, props.keyAt(index));
}

// A list draws the children of the blocks its "element_template" names (quotes
// removed, split at "+"), one name per cell, the last name for the cells left.
void DocumentChecker::checkElementTemplates(const SkinElementWalk::Visit &visit)
{
    const clsProperty property = visit.element.Properties().Find("element_template");
    if (!property)
        return;
    QByteArray list = property.value();
    if (list == kNoValue) {
        Problem &p = add(Severity::Error, ProblemCodes::UnknownElementTemplate, visit.nodeKey,
                         QStringLiteral("element_template is written without a value: the list draws no cells"));
        mPlaces.placeAtElement(p, visit.element, property.Key());
        return;
    }
    list.replace('"', QByteArray());
    if (list.isEmpty())
        return;
    for (const QByteArray &name : list.split('+')) {
        if (mDocument.Layers().Find(name))
            continue;
        Problem &p = add(Severity::Error, ProblemCodes::UnknownElementTemplate, visit.nodeKey,
                         name.isEmpty()
                             ? QStringLiteral("element_template=%1 holds an empty name: the cells it serves stay empty")
                                   .arg(shown(property.valueView()))
                             : QStringLiteral("element_template names %1, which is no block of the skin: the cells it serves stay empty")
                                   .arg(shown(name)));
        mPlaces.placeAtElement(p, visit.element, property.Key());
    }
}

// A USELAYER names by its own name the layer drawn beneath its block.
void DocumentChecker::checkUsedLayer(const SkinElementWalk::Visit &visit)
{
    const QByteArray name = visit.element.strName();
    if (mDocument.Layers().Find(name))
        return;
    Problem &problem = add(Severity::Error, ProblemCodes::MissingUsedLayer, visit.nodeKey,
                           QStringLiteral("USELAYER %1 names no layer of the skin: nothing is drawn for it")
                               .arg(shown(name)));
    mPlaces.placeAtElement(problem, visit.element);
}

// A key written twice on one tag is kept twice ("text", "text[0]"), but a
// value is looked up by its plain key: only the first is ever used. Links are
// the exception: every "template" and "fonttype" is followed in turn. Script
// lines all share one key.
void DocumentChecker::checkRepeatedKey(const SkinElementWalk::Visit &visit, int index)
{
    const clsProperties &props = visit.element.Properties();
    const QByteArrayView key = props.keyAt(index);
    const QByteArrayView plain = clsProperty::idKeyView(key);
    if (KeyIndex::sameKey(plain, "ScriptLine"))
        return;
    const clsProperty first = props.Find(plain);
    if (!first)
        return;
    Problem &problem = add(Severity::Warning, ProblemCodes::DuplicateName, visit.nodeKey,
                           QStringLiteral("%1 is written more than once on this tag: %2 is used, %3 never is; remove one")
                               .arg(shown(plain), NodeKey::propertyText(first, mDocument.codec()),
                                    NodeKey::propertyText(clsProperty(&props, index), mDocument.codec())));
    mPlaces.placeAtElement(problem, visit.element, key);
}

// A second element of one name in the same collection is kept under "name[0]";
// every look-up by name (a template=, a USELAYER, an element_template) finds
// the first.
void DocumentChecker::checkDuplicateName(const SkinElementWalk::Visit &visit)
{
    const clsElement &element = visit.element;
    const QByteArray name = element.strName();
    if (name.isEmpty() || !element.owner() || element.keyView() == QByteArrayView(name))
        return;
    const clsElement *first = element.owner()->Find(name);
    if (!first || first == &element)
        return;
    Problem &problem = add(Severity::Warning, ProblemCodes::DuplicateName, visit.nodeKey,
                           QStringLiteral("%1 is named like %2 at %3 in the same place: it is kept as %4, and a name finds only the first; rename one")
                               .arg(typeAndName(mDocument.codec(), element), typeAndName(mDocument.codec(), *first), mPlaces.whereIs(*first),
                                    shown(element.ElementKey())));
    mPlaces.placeAtElement(problem, element);
}

void DocumentChecker::checkScriptClosed(const SkinElementWalk::Visit &visit)
{
    const SkinSourceFile *file = mDocument.Sources().file(visit.element.sourceFile());
    if (!file || file->element(visit.element.sourceRecord()).closingLine != ElementSource::kNone)
        return;
    Problem &problem = add(Severity::Error, ProblemCodes::UnclosedScript, visit.nodeKey,
                           QStringLiteral("the script %1 is never closed: every plain line after it in the file is read as one of its lines; add </SCRIPT> after its last line")
                               .arg(shown(visit.element.strName())));
    mPlaces.placeAtElement(problem, visit.element);
}

// Any closing tag of a block closes the block that is open, whatever it is.
void DocumentChecker::checkClosingTag(const SkinElementWalk::Visit &visit)
{
    const clsElement &element = visit.element;
    if (!isBlockType(element.ElementType()))
        return;
    const SkinSourceFile *file = mDocument.Sources().file(element.sourceFile());
    if (!file)
        return;
    const quint32 closing = file->element(element.sourceRecord()).closingLine;
    if (closing == ElementSource::kNone)
        return;
    const SourceScan::Line line = SourceScan::scanLine(file->bytes(), closing);
    const QByteArray word = file->bytes().mid(line.wordBegin, line.wordEnd - line.wordBegin);
    if (AsciiCase::lowered(word) == AsciiCase::lowered('/' + element.ElementType()))
        return;
    Problem &problem = add(Severity::Warning, ProblemCodes::OrphanClosingTag, visit.nodeKey,
                           QStringLiteral("<%1> closes %2: write </%3>")
                               .arg(shown(word), typeAndName(mDocument.codec(), element), shown(element.ElementType())));
    mPlaces.placeAt(problem, element.sourceFile(), line.wordBegin > 0 ? line.wordBegin - 1 : line.begin);
}

// A template (font type) follows its own first "template" ("fonttype") to the
// next; a chain that comes back to where it began is looked through round and
// round by a program without a guard. One problem per circle, at its member
// that comes first.
void DocumentChecker::checkCycles(const clsElements &entries, QByteArrayView linkKey, const QString &what,
                                  char letter)
{
    for (int i = 0; i < entries.Count(); ++i) {
        const clsElement *start = entries.at(i);
        QVarLengthArray<const clsElement *, 8> chain;
        const clsElement *entry = start;
        while (entry && !chain.contains(entry)) {
            chain.append(entry);
            const clsProperty next = entry->Properties().Find(linkKey);
            entry = next ? entries.Find(next.valueView()) : nullptr;
        }
        if (entry != start)
            continue;
        const bool firstOfCircle = std::all_of(chain.begin(), chain.end(), [&](const clsElement *member) {
            return entries.positionOf(member) >= i;
        });
        if (!firstOfCircle)
            continue;
        QStringList names;
        for (const clsElement *member : chain)
            names << shown(member->strName());
        names << shown(start->strName());
        const QByteArray nodeKey = letter ? letter + start->ElementKey() : QByteArray();
        Problem &problem = add(Severity::Error, ProblemCodes::TemplateCycle, nodeKey,
                               QStringLiteral("the %1 %2 lead back to themselves: a value none of them holds is looked for round and round; remove one of these %3= links")
                                   .arg(what, names.join(QStringLiteral(" -> ")), shown(linkKey)));
        mPlaces.placeAtElement(problem, *start, start->Properties().Find(linkKey).Key());
    }
}

// Reads the file's tag lines again, as far as the reader read it: closing tags
// that closed nothing, and values the reader split or stripped.
void DocumentChecker::startFile(int fileNumber)
{
    const SkinSourceFile &file = *mDocument.Sources().file(fileNumber);
    mClosings.clear();
    for (int r = 0; r < file.elementCount(); ++r) {
        if (file.element(quint32(r)).closingLine != ElementSource::kNone)
            mClosings.push_back(file.element(quint32(r)).closingLine);
    }
    std::sort(mClosings.begin(), mClosings.end());
    mScanAt = 0;
    mScanStop = file.errorLine() > 0 ? mPlaces.lineStart(fileNumber, file.errorLine()) : file.bytes().size();
}

// The lines of up to about `budget` bytes of the file being read; true once
// it is read to its end.
bool DocumentChecker::scanFile(qsizetype budget)
{
    const int fileNumber = mScanFile;
    const QByteArray &bytes = mDocument.Sources().file(fileNumber)->bytes();
    const char *d = bytes.constData();
    const qsizetype stop = budget >= mScanStop - mScanAt ? mScanStop : mScanAt + budget;
    qsizetype at = mScanAt;
    while (at < stop) {
        qsizetype next = 0;
        const UiFileReader::LineSpan span = UiFileReader::lineAt(bytes, at, next);
        const char *end = d + span.offset + span.length;
        const char *first = d + span.offset;
        while (first < end && !(classOf(*first) & UiCharClasses::TokenStart))
            ++first;
        if (first == end || *first != '<') {
            at = next;
            continue;
        }
        QByteArrayView word;
        if (needsExactScan(first, end)) {
            const SourceScan::Line line = SourceScan::scanLine(bytes, at);
            word = QByteArrayView(bytes).sliced(line.wordBegin, line.wordEnd - line.wordBegin);
            checkNameLetters(fileNumber, line);
            checkSplitValues(fileNumber, line);
            next = line.next;
        } else {
            word = tagWord(first, end);
        }
        // Only a closing word is worth a copy; most tags open something.
        if (!word.startsWith('/')) {
            at = next;
            continue;
        }
        const QByteArray upper = AsciiCase::lowered(word.toByteArray()).toUpper();
        if (isClosingBlockWord(upper) && !std::binary_search(mClosings.begin(), mClosings.end(), at)) {
            addOnLine(fileNumber, at, first - d, Severity::Warning, ProblemCodes::OrphanClosingTag,
                      QStringLiteral("<%1> closes nothing: no %2 is open here; remove it")
                          .arg(shown(word), upper == "/SCRIPT" ? QStringLiteral("script") : QStringLiteral("block")));
        }
        at = next;
    }
    mScanAt = at;
    return at >= mScanStop;
}

// A value written as one but read as less: "value=65|0|100" reads as
// "value=65" and the flags "0" and "100", since "|" ends a value and is passed
// over; "bmp=$x.bmp" reads as "bmp=x.bmp", since "$" starts no token; "x=.5"
// reads as "x=5". Only what is plainly one word is taken as meant to be one
// value: the value, the bytes passed over right before and after it, and the
// flags that follow it with no blank between. A blank always parts two
// attributes, so "text=Main menu" is not reported: "menu" may well be a flag.
void DocumentChecker::checkSplitValues(int fileNumber, const SourceScan::Line &line)
{
    const QByteArray &bytes = mDocument.Sources().file(fileNumber)->bytes();
    const auto isPart = [](char c) { return !isBlank(c) && c != '<' && c != '>' && c != '='; };
    const std::vector<SourceScan::Attribute> &attributes = line.attributes;
    for (size_t i = 0; i < attributes.size(); ++i) {
        const SourceScan::Attribute &a = attributes[i];
        if (!a.hasValue || checkUnquotedText(fileNumber, line, a))
            continue;
        const qsizetype equals = bytes.indexOf('=', a.keyEnd);
        if (equals < 0 || equals >= a.valueBegin)
            continue;
        QByteArray lost;
        qsizetype meantBegin = equals + 1;
        while (meantBegin < a.valueBegin && isBlank(bytes.at(meantBegin)))
            ++meantBegin;
        lost += bytes.mid(meantBegin, a.valueBegin - meantBegin);
        qsizetype end = a.valueEnd;
        QStringList flags;
        size_t j = i + 1;
        for (; j < attributes.size() && !attributes[j].hasValue; ++j) {
            const QByteArray gap = bytes.mid(end, attributes[j].keyBegin - end);
            if (!std::all_of(gap.begin(), gap.end(), isPart))
                break;
            lost += gap;
            flags << shown(bytes.mid(attributes[j].keyBegin, attributes[j].keyEnd - attributes[j].keyBegin));
            end = attributes[j].keyEnd;
        }
        while (end < line.end && isPart(bytes.at(end)) && (j >= attributes.size() || end < attributes[j].keyBegin)) {
            lost += bytes.at(end);
            ++end;
        }
        if (lost.isEmpty() && flags.isEmpty())
            continue;
        i = j - 1;
        const QByteArray meant = bytes.mid(meantBegin, end - meantBegin);
        const QString written = shown(bytes.mid(a.keyBegin, end - a.keyBegin));
        QString reads = QStringLiteral("%1=%2").arg(shown(a.key), shown(a.value));
        if (!flags.isEmpty())
            reads += QStringLiteral(" and the flag%1 %2").arg(flags.size() > 1 ? QStringLiteral("s") : QString(), ProblemText::listed(flags));
        if (lost.contains('$') && isPictureKey(a.key)) {
            QByteArray plain = meant;
            plain.replace('$', QByteArray());
            addOnLine(fileNumber, line.begin, a.keyBegin, Severity::Warning, ProblemCodes::LostSharedMarker,
                      QStringLiteral("%1 reads as %2: the $ that marks a shared picture is dropped, so it is looked for as an ordinary picture (the skin's own folders first); write %3=%4")
                          .arg(written, reads, shown(a.key), shown(plain)));
            continue;
        }
        // A number written with a leading "." is meant as "0.": quotes would
        // make it no number at all.
        const bool leadingPoint = meant.size() > 1 && meant.at(0) == '.' && meant.at(1) >= '0' && meant.at(1) <= '9'
            && flags.isEmpty();
        const QByteArray fix = leadingPoint ? '0' + meant : quoted(meant);
        // Letters outside ASCII are no value characters: only quotes keep them.
        if (hasNonAscii(meant)) {
            addOnLine(fileNumber, line.begin, a.keyBegin, Severity::Warning, ProblemCodes::UnquotedText,
                      QStringLiteral("%1 reads as %2: letters outside ASCII end a value that is not in quotes; write %3=%4")
                          .arg(written, reads, shown(a.key), shown(fix)));
            continue;
        }
        addOnLine(fileNumber, line.begin, a.keyBegin, Severity::Warning, ProblemCodes::SplitValue,
                  QStringLiteral("%1 reads as %2: write %3=%4").arg(written, reads, shown(a.key), shown(fix)));
    }
}

// Text such as "text=Настройки iconphase=2": the letters after the "=" start
// no token, so the reader passes over them as blanks and reads "text=iconphase"
// (or an empty value at the end of the line). The meant text is the word after
// the "=". True when the attribute was such a one.
bool DocumentChecker::checkUnquotedText(int fileNumber, const SourceScan::Line &line, const SourceScan::Attribute &a)
{
    const QByteArray &bytes = mDocument.Sources().file(fileNumber)->bytes();
    qsizetype at = bytes.indexOf('=', a.keyEnd);
    if (at < 0 || at >= line.end)
        return false;
    ++at;
    while (at < line.end && isBlank(bytes.at(at)))
        ++at;
    if (at >= line.end || !isNonAscii(bytes.at(at)))
        return false;
    const qsizetype meantEnd = wordEndFrom(bytes, at, line.end);
    const QByteArray meant = bytes.mid(at, meantEnd - at);
    const QString written = shown(bytes.mid(a.keyBegin, meantEnd - a.keyBegin));
    const QString reads = a.value.isEmpty() || a.value == kNoValue
        ? QStringLiteral("%1 with no value").arg(shown(a.key))
        : QStringLiteral("%1=%2").arg(shown(a.key), shown(a.value));
    addOnLine(fileNumber, line.begin, a.keyBegin, Severity::Warning, ProblemCodes::UnquotedText,
              QStringLiteral("%1 reads as %2: letters outside ASCII end a value that is not in quotes; write %3=%4")
                  .arg(written, reads, shown(a.key), shown(quoted(meant))));
    return true;
}

// "<LAYER ui_Карта>" names the layer "ui_": the reader's letters are the ASCII
// ones. A name word that runs on into other letters, or that stands after
// them ("<TEXT Кнопка x=1>" names the element "x"), is such a name.
void DocumentChecker::checkNameLetters(int fileNumber, const SourceScan::Line &line)
{
    if (!line.isTag)
        return;
    const QByteArray &bytes = mDocument.Sources().file(fileNumber)->bytes();
    qsizetype from = line.wordEnd;
    while (from < line.end && isBlank(bytes.at(from)))
        ++from;
    if (from >= line.end || bytes.at(from) == '>')
        return;
    const qsizetype end = wordEndFrom(bytes, from, line.end);
    const QByteArray written = bytes.mid(from, end - from);
    if (!hasNonAscii(written.left(written.indexOf('=') < 0 ? written.size() : written.indexOf('='))))
        return;
    const QString reads = line.nameEnd > line.nameBegin
        ? QStringLiteral("\u201c%1\u201d").arg(shown(bytes.mid(line.nameBegin, line.nameEnd - line.nameBegin)))
        : QStringLiteral("no name");
    addOnLine(fileNumber, line.begin, from, Severity::Error, ProblemCodes::NonAsciiName,
              QStringLiteral("the name \u201c%1\u201d reads as %2: a name is written with the ASCII letters A-Z and a-z, "
                             "digits, _ and / only")
                  .arg(shown(written), reads));
}

void DocumentChecker::giveLineProblemsNodeKeys(const SkinElementWalk::Visit &visit)
{
    const clsElement &element = visit.element;
    const SkinSourceFile *file = mDocument.Sources().file(element.sourceFile());
    if (!file)
        return;
    const auto give = [&](qsizetype lineBegin) {
        const auto found = mLineProblems.constFind({ element.sourceFile(), lineBegin });
        if (found == mLineProblems.constEnd())
            return;
        for (int index : *found) {
            if (mProblems[index].nodeKey.isEmpty())
                mProblems[index].nodeKey = visit.nodeKey;
        }
    };
    give(file->element(element.sourceRecord()).tagLine);
    for (const quint32 more : file->moreLines(element.sourceRecord()))
        give(more);
}
