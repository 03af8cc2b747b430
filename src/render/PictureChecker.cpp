// SPDX-License-Identifier: MIT
#include "PictureChecker.h"

#include "CanvasSize.h"
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
#include <iterator>

using ProblemText::shown;
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

QString typeAndName(const clsElement &element)
{
    return shown(element.ElementType()) + QLatin1Char(' ') + shown(element.strName());
}

} // namespace

PictureChecker::PictureChecker(const clsKorviInterface &document, const SkinContext &context, ProblemPlaces &places)
    : mDocument(document)
    , mContext(context)
    , mPlaces(places)
    , mLookup(context, mReport)
{
}

// The values an object's place depends on, read in one pass over its own
// properties (the first of each key, as a look-up finds it). A value it lacks
// comes through its templates and font types, when it has any.
class PictureChecker::PlaceValues
{
public:
    PlaceValues(const clsKorviInterface &document, const clsElement &element)
        : mDocument(document)
        , mElement(element)
    {
        const clsProperties &props = element.Properties();
        for (int i = 0; i < props.Count(); ++i) {
            const QByteArrayView key = props.keyAt(i);
            if (key == QByteArrayView("template") || key == QByteArrayView("fonttype"))
                mLinked = true;
            const int slot = slotOf(key);
            if (slot >= 0 && !mFound[slot]) {
                mFound[slot] = true;
                mValues[slot] = props.valueAt(i).toByteArray();
            }
        }
    }

    QByteArray operator()(QByteArrayView key) const
    {
        const int slot = slotOf(key);
        if (slot >= 0 && (mFound[slot] || !mLinked))
            return mValues[slot];
        return mDocument.GetElementValue(key, &mElement);
    }

private:
    static constexpr QByteArrayView kKeys[] = { "x", "y", "w", "h", "bmp", "text", "iconspr", "bmpalign",
                                                "bmpvalign", "align", "cellw", "cellh", "col", "row" };
    static constexpr int kCount = int(std::size(kKeys));

    static int slotOf(QByteArrayView key)
    {
        for (int i = 0; i < kCount; ++i) {
            if (kKeys[i] == key)
                return i;
        }
        return -1;
    }

    const clsKorviInterface &mDocument;
    const clsElement &mElement;
    bool mLinked = false;
    bool mFound[kCount] = {};
    QByteArray mValues[kCount];
};

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
    return mProblems;
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

const PictureChecker::Resolution &PictureChecker::resolve(const QByteArray &reference)
{
    const auto known = mResolved.constFind(reference);
    if (known != mResolved.constEnd())
        return *known;
    Resolution r;
    const QString name = QFile::decodeName(reference);
    const QString fileName = SkinFileNames::GetFileName(name, true);
    r.readable = isPictureFileName(fileName);
    mReport.clear();
    r.file = mLookup.GetImageFile(reference);
    r.probes = probedPaths(mReport.text());
    if (!r.file.path.isEmpty())
        mUsed.insert(cleanAbsolute(r.file.path));
    if (SkinFileNames::GetExtension(fileName) == QLatin1String("spr")) {
        StringInfoSink quiet;
        const QString descriptor = ResourceLookup(mContext, quiet).LocateSkinFile(name, name.contains(QLatin1Char('$')));
        if (SkinFileNames::FileExists(descriptor)) {
            r.descriptor = descriptor;
            mUsed.insert(cleanAbsolute(descriptor));
        }
    }
    return *mResolved.insert(reference, r);
}

QSize PictureChecker::sizeOf(const QString &path)
{
    const auto known = mSizes.constFind(path);
    if (known != mSizes.constEnd())
        return *known;
    QImage buffer;
    return *mSizes.insert(path, mCache.LoadImageFile(path, buffer));
}

// Each picture property an element holds itself, where it stands; what a
// template gives is checked on the template.
void PictureChecker::checkPictures(const SkinElementWalk::Visit &visit)
{
    for (const char *key : kPictureKeys) {
        const clsProperty property = visit.element.Properties().Find(key);
        if (!property || property.valueView().isEmpty())
            continue;
        const QByteArray reference = property.value();
        const QString written = QStringLiteral("%1=%2").arg(QLatin1String(key), shown(reference));
        if (reference == kNoValue) {
            add(visit, Problem::Severity::Error, ProblemCodes::MissingPicture, property.Key(),
                QStringLiteral("%1 is written without a value: it names no picture").arg(QLatin1String(key)));
            continue;
        }
        const Resolution &r = resolve(reference);
        const QString fileName = SkinFileNames::GetFileName(QFile::decodeName(reference), true);
        if (r.file.path.isEmpty()) {
            const QString message = !r.readable
                ? QStringLiteral("%1: %2 is no picture the navigation program reads; a picture is a .bmp, .jpg or .spr file")
                      .arg(written, fileName)
                : QStringLiteral("%1: %2 is found nowhere; looked in: %3")
                      .arg(written, fileName, r.probes.join(QStringLiteral(", ")));
            add(visit, Problem::Severity::Error, ProblemCodes::MissingPicture, property.Key(), message);
        }
        // The frame drawn is the picture's height divided by the count: a
        // count of 0 leaves no frame, and a count below 0 a frame of no height
        // unless the descriptor gives the height.
        const qint16 count = r.file.spriteCount;
        if (count == 0 || (count < 0 && r.file.stripes < 1)) {
            add(visit, Problem::Severity::Warning, ProblemCodes::ZeroSpriteCount, property.Key(),
                QStringLiteral("%1 has the sprite count %2: the picture is never drawn; write a count of 1 or more after the #, or no #")
                    .arg(written)
                    .arg(count));
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
    const PlaceValues value(mDocument, element);
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
    const QByteArray bmp = value("bmp");
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
        QStringLiteral("%1 lies wholly outside the %2 x %3 screen (x from %4 to %5, y from %6 to %7): it is never seen; move it onto the screen")
            .arg(typeAndName(visit.element))
            .arg(mScreen.width())
            .arg(mScreen.height())
            .arg(all.left())
            .arg(all.left() + all.width())
            .arg(all.top())
            .arg(all.top() + all.height()));
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
