// SPDX-License-Identifier: MIT
// Arbitrary file bytes and an arbitrary sequence of edits (set, add and remove
// properties; add and remove elements), then Save Changes. Checks: reading the
// written file gives exactly the edited document; a save that is refused
// leaves the file as it was; a run without a change writes nothing; the tag
// line of every element no edit touched (nor anything among its children,
// nor the block it is in) and whose lines can all go along with it is still
// in the file, byte for byte;
// and the document then holds the file as written, every element where its
// record says.
#include "CarriedLines.h"
#include "ChangeFinder.h"
#include "SaveChanges.h"
#include "SkinReadError.h"
#include "SourceScan.h"
#include "UiFileReader.h"
#include "ValueSpelling.h"
#include "clsKorviInterface.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSet>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

const char *const kKeys[] = { "x", "y", "text", "visible", "ScriptLine", "bmp", "X", "a_b/c" };
const char *const kValues[] = { "1", "-5", "Go home now", "caf\xe9", "say \"hi\"", "it's", "", ".5", "a/",
                                "<NOV>", "65|0|100", "x=1", "\"q\"" };
const char *const kNames[] = { "n", "btnNew", "ui_New", "a/b", "" };
const char *const kTypes[] = { "TEXT", "BUTTON", "USELAYER", "SCRIPT", "LAYER", "SPRITE" };

template<size_t N>
QByteArray pick(FuzzedDataProvider &in, const char *const (&table)[N])
{
    return QByteArray(table[in.ConsumeIntegralInRange<size_t>(0, N - 1)]);
}

void collect(const clsElements &elements, std::vector<clsElement *> &all)
{
    for (clsElement *element : elements) {
        all.push_back(element);
        if (element->subElementCount() > 0)
            collect(element->SubElements(), all);
    }
}

std::vector<clsElement *> everyElement(const clsKorviInterface &doc)
{
    std::vector<clsElement *> all;
    for (const clsElements *c : { &doc.Headers(), &doc.Templates(), &doc.Fonts(), &doc.Layers() })
        collect(*c, all);
    return all;
}

// A value as the editor stores what is typed.
QByteArray spelled(FuzzedDataProvider &in)
{
    const QByteArray typed = pick(in, kValues);
    if (typed == "<NOV>")
        return typed;
    const ValueSpelling::Result result = ValueSpelling::of(typed, SkinCodec());
    return result.ok() ? result.spelling : QByteArrayLiteral("1");
}

bool sameElement(const clsElement &a, const clsElement &b)
{
    if (a.ElementType() != b.ElementType() || a.strName() != b.strName())
        return false;
    if (a.Properties().Count() != b.Properties().Count() || a.subElementCount() != b.subElementCount())
        return false;
    for (int i = 0; i < a.Properties().Count(); ++i) {
        const QByteArray ka = clsProperty::idKeyOf(a.Properties().keyAt(i)).toLower();
        const QByteArray kb = clsProperty::idKeyOf(b.Properties().keyAt(i)).toLower();
        if (ka != kb || a.Properties().valueAt(i) != b.Properties().valueAt(i))
            return false;
    }
    for (int i = 0; i < a.subElementCount(); ++i) {
        if (!sameElement(*a.SubElements().at(i), *b.SubElements().at(i)))
            return false;
    }
    return true;
}

bool sameDocument(const clsKorviInterface &a, const clsKorviInterface &b)
{
    const std::pair<const clsElements *, const clsElements *> pairs[] = {
        { &a.Headers(), &b.Headers() }, { &a.Templates(), &b.Templates() },
        { &a.Fonts(), &b.Fonts() }, { &a.Layers(), &b.Layers() } };
    for (const auto &[x, y] : pairs) {
        if (x->Count() != y->Count())
            return false;
        for (int i = 0; i < x->Count(); ++i) {
            if (!sameElement(*x->at(i), *y->at(i)))
                return false;
        }
    }
    return true;
}

QByteArray fileContent(const QString &path)
{
    QFile f(path);
    f.open(QIODevice::ReadOnly);
    return f.readAll();
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        abort();
    f.write(bytes);
}

bool read(clsKorviInterface &doc, const QString &path)
{
    try {
        ReadUiFile(doc, path, false);
    } catch (const SkinReadError &) {
        return false;
    }
    return true;
}

// Elements an edit touched, or whose block did: their lines may change.
void markWithChildren(const clsElement *element, QSet<const clsElement *> &touched)
{
    touched.insert(element);
    if (element->subElementCount() > 0) {
        for (const clsElement *child : element->SubElements())
            markWithChildren(child, touched);
    }
}

// The block that holds an element, if any: an edit among a block's children
// changes the block as well, and a block that changed cannot take all its
// lines along when it has to move.
clsElement *blockHolding(const clsKorviInterface &doc, const clsElement *element)
{
    for (clsElement *block : everyElement(doc)) {
        if (block->subElementCount() > 0 && &block->SubElements() == element->owner())
            return block;
    }
    return nullptr;
}

// A check failed: which one, after which edits (by kind), and with
// KORVI_FUZZ_SHOW the file before and after, for the one who reads the crash.
[[noreturn]] void fail(const char *why, const QByteArray &kinds, const QByteArray &original, const QByteArray &written)
{
    fprintf(stderr, "fuzz_lossless: %s (edits of kinds %s)\n", why, kinds.constData());
    if (qEnvironmentVariableIsSet("KORVI_FUZZ_SHOW")) {
        // Whole, NUL bytes and all.
        fputs("---- read\n", stderr);
        fwrite(original.constData(), 1, size_t(original.size()), stderr);
        fputs("\n---- written\n", stderr);
        fwrite(written.constData(), 1, size_t(written.size()), stderr);
        fputs("\n", stderr);
    }
    abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const QString dir = QDir::tempPath() + QStringLiteral("/fuzz_lossless_") + QString::number(QCoreApplication::applicationPid());
    static const bool made = QDir().mkpath(dir);
    if (!made)
        abort();
    const QString path = dir + QStringLiteral("/skin.ui");
    QFile::remove(dir + QStringLiteral("/skin.bak"));

    FuzzedDataProvider in(data, size);
    // The edits come from the end of the input, the file's bytes are the rest.
    struct Edit
    {
        int kind;
        size_t element;
        size_t property;
        QByteArray key;
        QByteArray value;
        QByteArray name;
        QByteArray type;
    };
    std::vector<Edit> edits(in.ConsumeIntegralInRange<size_t>(0, 6));
    for (Edit &e : edits) {
        e.kind = in.ConsumeIntegralInRange(0, 7);
        e.element = in.ConsumeIntegral<uint16_t>();
        e.property = in.ConsumeIntegral<uint8_t>();
        e.key = pick(in, kKeys);
        e.value = spelled(in);
        e.name = pick(in, kNames);
        e.type = pick(in, kTypes);
    }
    const std::vector<char> rest = in.ConsumeRemainingBytes<char>();
    const QByteArray original(rest.data(), qsizetype(rest.size()));
    writeFile(path, original);

    clsKorviInterface doc;
    read(doc, path);
    // The tag line of every element as read.
    QHash<const clsElement *, QByteArray> tagLines;
    for (const clsElement *element : everyElement(doc)) {
        const SkinSourceFile *file = doc.Sources().file(element->sourceFile());
        if (!file)
            continue;
        const SourceScan::Line line = SourceScan::scanLine(file->bytes(), file->element(element->sourceRecord()).tagLine);
        tagLines.insert(element, file->bytes().mid(line.begin, line.next - line.begin));
    }
    QSet<const clsElement *> touched;
    // An element that cannot take all its lines along even as read (a line
    // that gave it a property would stay behind) is written anew when it
    // moves: its tag line is not held to.
    {
        CarriedLines carried(doc);
        for (const clsElement *element : everyElement(doc)) {
            if (!carried.canCarry(*element))
                touched.insert(element);
        }
    }
    bool changed = false;
    QByteArray kinds;
    for (const Edit &e : edits)
        kinds += char('0' + e.kind);
    for (const Edit &e : edits) {
        std::vector<clsElement *> all = everyElement(doc);
        if (e.kind == 4 || all.empty()) {
            // A new top-level layer, or a new child of a block.
            clsElement *parent = all.empty() ? nullptr : all[e.element % all.size()];
            clsElement *added = parent && parent->owner() == &doc.Layers() && e.type != "LAYER"
                ? parent->SubElements().Add(e.name, e.type)
                : doc.Layers().Add(e.name.isEmpty() ? QByteArray("ui_New") : e.name, "LAYER");
            if (added->ElementType() == "SCRIPT")
                added->Properties().Add("ScriptLine", "go");
            else if (e.value != "<NOV>" || !e.key.isEmpty())
                added->Properties().Add(e.key.toLower(), e.value);
            if (parent)
                markWithChildren(parent, touched);
            changed = true;
            continue;
        }
        if (e.kind == 6) {
            // A new element at any place among its siblings: a child of a
            // block, or a layer between layers.
            clsElement *parent = all[e.element % all.size()];
            clsElements &siblings = parent->owner() == &doc.Layers() && e.type != "LAYER" ? parent->SubElements() : doc.Layers();
            clsElement *added = siblings.Add(e.name.isEmpty() ? QByteArray("ui_New") : e.name,
                                             &siblings == &doc.Layers() ? QByteArray("LAYER") : e.type);
            if (added->ElementType() == "SCRIPT")
                added->Properties().Add("ScriptLine", "go");
            else if (e.value != "<NOV>" || !e.key.isEmpty())
                added->Properties().Add(e.key.toLower(), e.value);
            siblings.Insert(int(e.property % size_t(siblings.Count())), siblings.Take(siblings.Count() - 1));
            if (clsElement *block = blockHolding(doc, added))
                touched.insert(block);
            changed = true;
            continue;
        }
        clsElement *element = all[e.element % all.size()];
        // A removal (5) or a move (7) changes the block it happens in.
        if (e.kind == 5 || e.kind == 7) {
            if (clsElement *block = blockHolding(doc, element))
                touched.insert(block);
        }
        if (e.kind == 7) {
            // An element moved to another place among its siblings.
            clsElements &siblings = *element->owner();
            const int from = siblings.positionOf(element);
            const int to = int(e.property % size_t(siblings.Count()));
            if (from != to) {
                siblings.Insert(to, siblings.Take(from));
                markWithChildren(element, touched);
                changed = true;
            }
            continue;
        }
        markWithChildren(element, touched);
        clsProperties &props = element->Properties();
        switch (e.kind) {
        case 0: // set an existing property
            if (props.Count() > 0) {
                const int i = int(e.property % size_t(props.Count()));
                changed |= props.valueAt(i) != e.value;
                props.setValueAt(i, e.value);
            }
            break;
        case 1: // add a property
            props.Add(element->ElementType() == "SCRIPT" ? QByteArray("ScriptLine") : e.key.toLower(),
                      element->ElementType() == "SCRIPT" ? QByteArray("go on") : e.value);
            changed = true;
            break;
        case 2: // remove a property
            if (props.Count() > 0) {
                props.Remove(int(e.property % size_t(props.Count())) + 1);
                changed = true;
            }
            break;
        case 3: // set a property to what it is: no change
            if (props.Count() > 0) {
                const int i = int(e.property % size_t(props.Count()));
                props.setValueAt(i, props.valueAt(i).toByteArray());
            }
            break;
        default: // remove the element with its children
            element->owner()->Remove(element->Index());
            changed = true;
            break;
        }
    }

    SaveChanges saver(doc);
    saver.setFileForNewElements(path);
    const SaveChanges::Result result = saver.save([](const QString &) { return true; });
    const QByteArray written = fileContent(path);
    // KORVI_FUZZ_STATS: how many saves were made, found nothing, or refused.
    static int outcomes[4] = {};
    static const bool stats = qEnvironmentVariableIsSet("KORVI_FUZZ_STATS");
    ++outcomes[int(result.outcome)];
    if (stats && (outcomes[0] + outcomes[1] + outcomes[2] + outcomes[3]) % 2000 == 0)
        fprintf(stderr, "saved %d, nothing to save %d, refused %d\n", outcomes[0], outcomes[1], outcomes[3]);
    // KORVI_FUZZ_REASONS: why saves were refused.
    if (!result.ok() && qEnvironmentVariableIsSet("KORVI_FUZZ_REASONS")) {
        fprintf(stderr, "refused: %s %s\n", kinds.constData(), qPrintable(result.error.left(200)));
    }
    if (!result.ok()) {
        // Refused: nothing written, and a reason given.
        if (written != original || result.error.isEmpty() || QFile::exists(dir + QStringLiteral("/skin.bak")))
            fail("a refused save wrote, left a backup or gave no reason", kinds, original, written);
        return 0;
    }
    if (!changed && result.outcome != SaveChanges::Result::Outcome::NothingToSave)
        fail("written without a change", kinds, original, written);
    if (result.outcome == SaveChanges::Result::Outcome::NothingToSave && written != original)
        fail("nothing to save, yet the file changed", kinds, original, written);
    // Reading the written file gives exactly the edited document.
    clsKorviInterface again;
    read(again, path);
    if (!sameDocument(doc, again))
        fail("the written file does not read back as the edited document", kinds, original, written);
    // Every element no edit touched keeps its tag line as it was.
    for (auto it = tagLines.cbegin(); it != tagLines.cend(); ++it) {
        if (!touched.contains(it.key()) && !written.contains(it.value())) {
            fprintf(stderr, "fuzz_lossless: gone: [%s]\n", it.value().toPercentEncoding(" <>=/\"'").constData());
            fail("the tag line of an element no edit touched changed", kinds, original, written);
        }
    }
    // The kept bytes are the file as written.
    const int number = doc.Sources().numberOf(path);
    if (result.reopen.isEmpty() && number > 0 && doc.Sources().file(number)->bytes() != written)
        fail("the kept bytes are not the file as written", kinds, original, written);
    // Saving again finds nothing more to write, even with every element
    // compared in full with where its record says it stands.
    for (clsElement *element : everyElement(doc))
        element->setStrName(element->strName());
    SaveChanges second(doc);
    second.setFileForNewElements(path);
    for (const SaveChanges::Pending &p : second.pending()) {
        fprintf(stderr, "still pending in %s: %d changes; %s\n", qPrintable(p.path), p.changes,
                qPrintable(p.problems.join(QLatin1Char(';'))));
        if (qEnvironmentVariableIsSet("KORVI_FUZZ_SHOW")) {
            for (const FileChanges &c : ChangeFinder(doc, 1).find()) {
                for (const SourceEdits::Edit &e : c.edits.edits())
                    fprintf(stderr, "edit %lld..%lld [%s] -> [%s]\n", (long long)e.begin, (long long)e.end,
                            written.mid(e.begin, e.end - e.begin).constData(), e.text.constData());
            }
        }
        fail("saving again finds more to write", kinds, original, written);
    }
    return 0;
}
