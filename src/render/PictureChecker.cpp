// SPDX-License-Identifier: MIT
#include "PictureChecker.h"

#include "AsciiCase.h"
#include "CanvasSize.h"
#include "ImageLoader.h"
#include "ProblemCodes.h"
#include "ProblemPlaces.h"
#include "ProblemText.h"
#include "SkinContext.h"
#include "SkinElementWalk.h"
#include "SkinFileNames.h"
#include "SkinValues.h"
#include "clsKorviInterface.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QStringBuilder>
#include <QVarLengthArray>
#include <algorithm>
#include <iterator>
#include <utility>

using namespace SkinValues;

namespace {

const QByteArray kNoValue = QByteArrayLiteral("<NOV>");
const char *const kPictureKeys[] = { "bmp", "sprind", "iconspr" };

QString cleanAbsolute(const QString &path)
{
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

bool isPictureFileName(const QString &name)
{
    const QString extension = SkinFileNames::GetExtension(name);
    return extension == QLatin1String("bmp") || extension == QLatin1String("jpg") || extension == QLatin1String("spr");
}

// The paths of a lookup's report: "Unable to locate F in P" lines.
QStringList probedPaths(const QString &report)
{
    QStringList paths;
    const QString in = QStringLiteral(" in ");
    for (const QString &line : report.split(QStringLiteral("\r\n"), Qt::SkipEmptyParts)) {
        const qsizetype at = line.indexOf(in);
        if (at >= 0)
            paths << line.mid(at + in.size());
    }
    return paths;
}

QString typeAndName(const SkinCodec &codec, const clsElement &element)
{
    return codec.toText(element.ElementType()) + QLatin1Char(' ') + codec.toText(element.strName());
}

// The values an object's place depends on.
constexpr QByteArrayView kPlaceKeys[] = { "x", "y", "w", "h", "bmp", "text", "iconspr", "bmpalign",
                                          "bmpvalign", "align", "cellw", "cellh", "col", "row" };
constexpr int kPlaceKeyCount = int(std::size(kPlaceKeys));

int placeSlotOf(QByteArrayView key)
{
    // Asked for every property of every object: sizes first. Keys are found
    // without regard to case, as a look-up finds them; the keys here are all
    // lower-case letters, which the 0x20 bit lowers exactly.
    for (int i = 0; i < kPlaceKeyCount; ++i) {
        const QByteArrayView known = kPlaceKeys[i];
        if (known.size() != key.size())
            continue;
        qsizetype j = 0;
        while (j < key.size() && (key[j] | 0x20) == known[j])
            ++j;
        if (j == key.size())
            return i;
    }
    return -1;
}

} // namespace

// What objects take through their templates and font types, by their links.
// What a chain of templates or of font types gives an object that lacks a
// value: the same for every object that links to the chain's first entry, so
// each chain is followed once per key and check.
class PictureChecker::ChainValues
{
public:
    explicit ChainValues(const clsKorviInterface &document) : mDocument(document) { }

    // The value of the chain of templates ('t') or font types ('f') that
    // begins at the entry named `name`, as a look-up follows it
    // (clsKorviInterface::GetElementValue): an entry's own value, else the
    // next entry its first link names; a chain that comes back to an entry
    // ends there. Null when the chain gives none.
    const QByteArray &value(char kind, QByteArrayView name, int slot)
    {
        Given &given = (kind == 't' ? mTemplateChains : mFontChains)[name];
        if (!given.known[slot]) {
            given.values[slot] = follow(kind, name, kPlaceKeys[slot]);
            given.known[slot] = true;
        }
        return given.values[slot];
    }

private:
    struct Given
    {
        bool known[kPlaceKeyCount] = {};
        QByteArray values[kPlaceKeyCount];
    };

    QByteArray follow(char kind, QByteArrayView name, QByteArrayView key) const
    {
        const clsElements &targets = kind == 't' ? mDocument.Templates() : mDocument.Fonts();
        const QByteArrayView linkKey = kind == 't' ? QByteArrayView("template") : QByteArrayView("fonttype");
        QVarLengthArray<const clsElement *, 8> visited;
        const clsElement *entry = targets.Find(name);
        while (entry && !visited.contains(entry)) {
            if (const clsProperty own = entry->Properties().Find(key)) {
                const QByteArray value = own.value();
                return value.isNull() ? QByteArray("") : value;
            }
            visited.append(entry);
            const clsProperty next = entry->Properties().Find(linkKey);
            entry = next ? targets.Find(next.valueView()) : nullptr;
        }
        return QByteArray();
    }

    const clsKorviInterface &mDocument;
    // By the name of the chain's first entry, a view of the bytes of the
    // document, which does not change during a check.
    QHash<QByteArrayView, Given> mTemplateChains;
    QHash<QByteArrayView, Given> mFontChains;
};

// The values an object's place depends on, read in one pass over its own
// properties (the first of each key, as a look-up finds it). A value it lacks
// comes through its templates, then its font types, in the order it links to
// them, when it has any.
class PictureChecker::PlaceValues
{
public:
    PlaceValues(const clsElement &element, ChainValues &chains);

    // Valid while the element and the checker are.
    QByteArrayView operator()(QByteArrayView key) const;

private:
    struct Link
    {
        char kind;
        QByteArrayView name;
    };

    ChainValues &mChains;
    bool mFound[kPlaceKeyCount] = {};
    QByteArrayView mValues[kPlaceKeyCount];
    QVarLengthArray<Link, 4> mLinks;
};

PictureChecker::PictureChecker(const clsKorviInterface &document, const SkinContext &context, ProblemPlaces &places)
    : mDocument(document)
    , mContext(context)
    , mPlaces(places)
    , mLookup(context, mReport)
    , mChains(std::make_unique<ChainValues>(document))
{
}

PictureChecker::~PictureChecker() = default;

QString PictureChecker::shown(QByteArrayView bytes) const
{
    return ProblemText::shown(mDocument.codec(), bytes);
}

PictureChecker::PlaceValues::PlaceValues(const clsElement &element, ChainValues &chains)
    : mChains(chains)
{
    const clsProperties &props = element.Properties();
    for (int i = 0; i < props.Count(); ++i) {
        const QByteArrayView key = props.keyAt(i);
        // Both link keys have eight letters, which few other keys have.
        const QByteArrayView plain = key.size() >= 8 ? clsProperty::idKeyView(key) : key;
        if (plain.size() == 8 && (AsciiCase::sameIgnoringCase(plain, "template") || AsciiCase::sameIgnoringCase(plain, "fonttype"))) {
            mLinks.append({ char(plain.at(0) | 0x20), props.valueAt(i) });
            continue;
        }
        const int slot = placeSlotOf(key);
        if (slot >= 0 && !mFound[slot]) {
            mFound[slot] = true;
            mValues[slot] = props.valueAt(i);
        }
    }
    // Every template is tried before any font type.
    std::stable_partition(mLinks.begin(), mLinks.end(), [](const Link &link) { return link.kind == 't'; });
}

QByteArrayView PictureChecker::PlaceValues::operator()(QByteArrayView key) const
{
    const int slot = placeSlotOf(key);
    Q_ASSERT(slot >= 0);
    if (slot < 0 || mFound[slot])
        return slot < 0 ? QByteArrayView() : mValues[slot];
    for (const Link &link : mLinks) {
        const QByteArray &given = mChains.value(link.kind, link.name, slot);
        if (!given.isNull())
            return given;
    }
    return QByteArrayView();
}

QVector<Problem> PictureChecker::check(bool wholeSkin)
{
    begin();
    SkinElementWalk::forEach(mDocument, [this](const SkinElementWalk::Visit &visit) { this->visit(visit); });
    return finish(wholeSkin);
}

void PictureChecker::begin()
{
    mProblems.clear();
    mScreen = CanvasSize::forSkin(mContext, mCache);
}

void PictureChecker::visit(const SkinElementWalk::Visit &visit)
{
    if (visit.element.ElementType() == "SCRIPT")
        return;
    checkPictures(visit);
    if (isDrawnObject(visit))
        checkOnScreen(visit);
}

QVector<Problem> PictureChecker::finish(bool wholeSkin)
{
    if (wholeSkin)
        checkUnusedPictures();
    return std::exchange(mProblems, {});
}

void PictureChecker::add(const SkinElementWalk::Visit &visit, Problem::Severity severity, const QString &code,
                         QByteArrayView key, const QString &message)
{
    Problem problem;
    problem.severity = severity;
    problem.code = code;
    problem.nodeKey = visit.nodeKey;
    problem.message = message;
    mPlaces.placeAtElement(problem, visit.element, key);
    mProblems.append(problem);
}

// Names are kept as views of the document's bytes (or of a chain's value),
// which stay put while a check goes on: finding a name known already copies
// nothing.
const PictureChecker::Resolution &PictureChecker::resolve(QByteArrayView referenceView)
{
    const auto known = mResolved.constFind(referenceView);
    if (known != mResolved.constEnd())
        return *known;
    Resolution r;
    const QByteArray reference = referenceView.toByteArray();
    const QString name = mDocument.codec().toText(reference);
    r.fileName = SkinFileNames::GetFileName(name, true);
    r.readable = isPictureFileName(r.fileName);
    mReport.clear();
    r.file = mLookup.GetImageFile(name);
    r.probes = probedPaths(mReport.text());
    if (!r.file.path.isEmpty())
        mUsed.insert(cleanAbsolute(r.file.path));
    if (SkinFileNames::GetExtension(r.fileName) == QLatin1String("spr")) {
        StringInfoSink quiet;
        const QString descriptor = ResourceLookup(mContext, quiet).LocateSkinFile(name, name.contains(QLatin1Char('$')));
        if (SkinFileNames::FileExists(descriptor)) {
            r.descriptor = descriptor;
            mUsed.insert(cleanAbsolute(descriptor));
        }
    }
    return *mResolved.insert(referenceView, r);
}

// The header alone says what a JPEG is: its reader draws what the data holds
// even when it is cut short. A bitmap or an RL picture is decoded whole to
// know that every row is there, and the pixels are dropped at once: the check
// keeps no picture.
const PictureChecker::Picture &PictureChecker::picture(const QString &path)
{
    const auto known = mPictures.constFind(path);
    if (known != mPictures.constEnd())
        return *known;
    Picture picture;
    if (!path.isEmpty() && SkinFileNames::GetExtension(path) == QLatin1String("jpg"))
        picture.size = QImageReader(path).size();
    if (!picture.size.isValid() || picture.size.isEmpty()) {
        QImage buffer;
        picture.size = ImageLoader::LoadImageFile(path, buffer, &picture.problem);
    }
    return *mPictures.insert(path, picture);
}

// Each picture property an element holds itself, where it stands; what a
// template gives is checked on the template.
void PictureChecker::checkPictures(const SkinElementWalk::Visit &visit)
{
    for (const char *key : kPictureKeys) {
        const clsProperty property = visit.element.Properties().Find(key);
        if (!property || property.valueView().isEmpty())
            continue;
        const QByteArrayView reference = property.valueView();
        // Most pictures are found: the message is made only for a problem.
        const auto written = [&] { return QLatin1String(key) + QLatin1Char('=') + shown(reference); };
        if (reference == kNoValue) {
            add(visit, Problem::Severity::Error, ProblemCodes::MissingPicture, property.Key(),
                QStringLiteral("%1 is written without a value: it names no picture").arg(QLatin1String(key)));
            continue;
        }
        const Resolution &r = resolve(reference);
        if (r.file.path.isEmpty()) {
            // Made by the thousand in a large skin: one allocation, no format.
            const QString message = !r.readable
                ? QString(written() % QLatin1String(": ") % r.fileName
                    % QLatin1String(" is no picture the navigation program reads; a picture is a .bmp, .jpg or .spr file"))
                : written() % QLatin1String(": ") % r.fileName % QLatin1String(" is found nowhere; looked in: ")
                    % r.probes.join(QStringLiteral(", "));
            add(visit, Problem::Severity::Error, ProblemCodes::MissingPicture, property.Key(), message);
        } else if (const PictureProblem &problem = picture(r.file.path).problem; problem.isProblem()) {
            add(visit, Problem::Severity::Error, ProblemCodes::BadPicture, property.Key(),
                written() % QLatin1String(" names ") % QDir::toNativeSeparators(cleanAbsolute(r.file.path))
                    % QLatin1String(", which cannot be shown: ") % problem.what
                    % (problem.unreadable ? QLatin1String("; the placeholder is drawn in its place")
                                          : QLatin1String("; what is missing stays transparent")));
        }
        // The frame drawn is the picture's height divided by the count: a
        // count of 0 leaves no frame, and a count below 0 a frame of no height
        // unless the descriptor gives the height.
        const qint16 count = r.file.spriteCount;
        if (count == 0 || (count < 0 && r.file.stripes < 1)) {
            add(visit, Problem::Severity::Warning, ProblemCodes::ZeroSpriteCount, property.Key(),
                QStringLiteral("%1 has the sprite count %2: the picture is never drawn; write a count of 1 or more after the #, or no #")
                    .arg(written(), QString::number(count)));
        }
    }
}

// The objects a layer or state draws of itself; element templates are drawn
// only as cells of lists, at places the list decides.
bool PictureChecker::isDrawnObject(const SkinElementWalk::Visit &visit) const
{
    const clsElement *block = visit.parent;
    if (!block || block->owner() != &mDocument.Layers())
        return false;
    const QByteArray blockType = block->ElementType();
    if (blockType != "LAYER" && blockType != "STATE")
        return false;
    const QByteArray type = visit.element.ElementType();
    return !visit.element.IsUseLayer() && !type.startsWith('/');
}

// The parts of an object whose place is known without fonts: the grid of a
// list, the main picture (aligned as the renderer aligns it) and the box of
// "x", "y", "w" and "h". A text is fitted into its box, and an icon is put on
// the main picture or the box; an object whose text or icon has neither is
// not placeable, and is never called off the screen.
QVector<QRect> PictureChecker::partsOf(const clsElement &element, bool &placeable)
{
    const PlaceValues value(element, *mChains);
    const int X = Number(value("x"));
    const int Y = Number(value("y"));
    const int W = Number(value("w"));
    const int H = Number(value("h"));
    const bool box = W > 0 && H > 0;
    QVector<QRect> parts;
    if (box) {
        parts << QRect(X, Y, W, H);
        // Most objects show their box on the screen: nothing more to read.
        if (parts.first().intersects(QRect(QPoint(0, 0), mScreen)))
            return parts;
    }
    if (element.IsList()) {
        parts << QRect(X, Y, clampCoordinate(qint64(Number(value("cellw"))) * Number(value("col"))),
                       clampCoordinate(qint64(Number(value("cellh"))) * Number(value("row"))));
    }
    bool picture = false;
    const QByteArrayView bmp = value("bmp");
    if (!bmp.isEmpty()) {
        const Resolution &r = resolve(bmp);
        if (r.file.spriteCount != 0) {
            picture = true;
            // A frame with its corner inside the screen shows, however it is
            // aligned: it can only move left and up by its own size (a sprite
            // that is centred within its width moves further).
            const QSize size = sizeOf(r.file.path);
            const bool cornerInside = X > 0 && Y > 0 && X < mScreen.width() && Y < mScreen.height();
            if (cornerInside && size.width() > 0 && size.height() > 0 && !(element.IsSprite() && W != 0))
                return {};
            parts << pictureFrame(element, value, r, X, Y, W);
        }
    }
    const bool text = !value("text").isEmpty() || element.IsText() || element.IsTemplate() || element.IsSlider();
    const bool icon = !value("iconspr").isEmpty();
    placeable = !((text || icon) && !box && !picture);
    QVector<QRect> drawn;
    for (const QRect &part : parts) {
        if (part.width() > 0 && part.height() > 0)
            drawn << part;
    }
    return drawn;
}

// The main picture's frame, aligned as the renderer aligns it.
QRect PictureChecker::pictureFrame(const clsElement &element, const PlaceValues &value, const Resolution &r, int X,
                                   int Y, int W)
{
    const QSize size = sizeOf(r.file.path);
    const int PW = size.width();
    const int PH = r.file.stripes >= 1 ? r.file.stripes : size.height() / r.file.spriteCount;
    int horizontal = ParseAlign(value("bmpalign"), AlignLeft).code;
    int vertical = ParseAlign(value("bmpvalign"), AlignTop).code;
    if (r.file.grabCenter)
        horizontal = vertical = AlignCenter;
    int px = X;
    int py = Y;
    if (horizontal == AlignRight)
        px -= PW;
    else if (horizontal == AlignCenter)
        px -= PW / 2;
    if (element.IsSprite() && ParseAlign(value("align"), AlignLeft).code == AlignCenter && W != 0)
        px += (W - PW) / 2;
    if (vertical == AlignBottom)
        py -= PH;
    else if (vertical == AlignCenter)
        py -= PH / 2;
    return QRect(px, py, PW, PH);
}

void PictureChecker::checkOnScreen(const SkinElementWalk::Visit &visit)
{
    bool placeable = true;
    const QVector<QRect> parts = partsOf(visit.element, placeable);
    if (!placeable || parts.isEmpty())
        return;
    const QRect screen(QPoint(0, 0), mScreen);
    QRect all;
    for (const QRect &part : parts) {
        if (part.intersects(screen))
            return;
        all = all.united(part);
    }
    add(visit, Problem::Severity::Warning, ProblemCodes::OffScreen, {},
        typeAndName(mDocument.codec(), visit.element) % QLatin1String(" lies wholly outside the ") % QString::number(mScreen.width())
            % QLatin1String(" x ") % QString::number(mScreen.height()) % QLatin1String(" screen (x from ")
            % QString::number(all.left()) % QLatin1String(" to ") % QString::number(all.left() + all.width())
            % QLatin1String(", y from ") % QString::number(all.top()) % QLatin1String(" to ")
            % QString::number(all.top() + all.height())
            % QLatin1String("): it is never seen; move it onto the screen"));
}

// The folders the lookup looks in, as far as they exist.
QStringList PictureChecker::pictureFolders() const
{
    const QString U = SkinFileNames::GetParentFolder(mContext.UiFilePath);
    const QString &D = mContext.SkinDirectory;
    const QString &R = mContext.SkinFormat;
    QStringList candidates { U + QStringLiteral("/.."), U + QStringLiteral("/../../common") };
    if (!D.isEmpty()) {
        candidates << D + QStringLiteral("/common");
        if (!R.isEmpty())
            candidates << D + QLatin1Char('/') + R << D + QStringLiteral("/common/vga/") + R;
    }
    QStringList folders;
    for (const QString &candidate : candidates) {
        const QString folder = cleanAbsolute(candidate);
        if (QFileInfo(folder).isDir() && !folders.contains(folder))
            folders << folder;
    }
    return folders;
}

void PictureChecker::checkUnusedPictures()
{
    for (const QString &folder : pictureFolders()) {
        const QDir dir(folder);
        for (const QString &name : dir.entryList(QDir::Files, QDir::Name | QDir::IgnoreCase)) {
            const QString path = cleanAbsolute(dir.filePath(name));
            if (!isPictureFileName(name) || mUsed.contains(path))
                continue;
            Problem problem;
            problem.severity = Problem::Severity::Warning;
            problem.code = ProblemCodes::UnusedPicture;
            problem.file = path;
            problem.message = QStringLiteral("%1 is named by no object of the skin: remove it, or name it where it is meant to show")
                                  .arg(name);
            mProblems.append(problem);
        }
    }
}
