// SPDX-License-Identifier: MIT
#pragma once

#include "ImageFile.h"
#include "PictureCache.h"
#include "PictureProblem.h"
#include "Problem.h"
#include "ResourceLookup.h"
#include "StringInfoSink.h"

#include <QHash>
#include <QRect>
#include <QSet>
#include <QVector>
#include <memory>

class ProblemPlaces;
class clsElement;
class clsKorviInterface;
struct SkinContext;
namespace SkinElementWalk { struct Visit; }

// The checks that need the skin's pictures: picture names found nowhere (with
// every place the lookup tried), pictures found but not decodable (as the
// information box describes them when they are drawn), sprite counts that
// leave nothing to draw,
// objects that lie wholly off the screen, and, when a whole skin folder is
// checked, pictures that no object names. Pictures are looked up as the
// renderer looks them up, from the open file's folder (SkinContext); each
// distinct name is looked up once per check, and each file found is read once.
class PictureChecker
{
public:
    PictureChecker(const clsKorviInterface &document, const SkinContext &context, ProblemPlaces &places);
    ~PictureChecker();

    // `wholeSkin`: the document holds every .ui file of the skin (All), so a
    // picture no object names is left over. One file read alone (Open) says
    // nothing of the pictures the skin's other files name.
    QVector<Problem> check(bool wholeSkin);

    // The same in steps, for one walk that serves several checkers.
    void begin();
    void visit(const SkinElementWalk::Visit &visit);
    QVector<Problem> finish(bool wholeSkin);

private:
    // Skin text quoted in a message, in the skin's code page.
    QString shown(QByteArrayView bytes) const;
    class PlaceValues;
    class ChainValues;
    struct Resolution
    {
        ImageFile file;
        // Every path the lookup tried in vain, in order.
        QStringList probes;
        // The sprite descriptor found for a ".spr" name, else empty.
        QString descriptor;
        // The file name the reference names, as the lookup looks for it.
        QString fileName;
        bool readable = true;
    };

    // A picture file as far as the check needs it: its size, and what is
    // wrong with it when it cannot be shown (or only in part).
    struct Picture
    {
        QSize size;
        PictureProblem problem;
    };

    const Resolution &resolve(QByteArrayView reference);
    const Picture &picture(const QString &path);
    QSize sizeOf(const QString &path) { return picture(path).size; }
    void checkPictures(const SkinElementWalk::Visit &visit);
    void checkOnScreen(const SkinElementWalk::Visit &visit);
    bool isDrawnObject(const SkinElementWalk::Visit &visit) const;
    QVector<QRect> partsOf(const clsElement &element, bool &placeable);
    QRect pictureFrame(const clsElement &element, const PlaceValues &values, const Resolution &resolution, int X,
                       int Y, int W);
    void checkUnusedPictures();
    QStringList pictureFolders() const;
    void add(const SkinElementWalk::Visit &visit, Problem::Severity severity, const QString &code,
             QByteArrayView key, const QString &message);

    const clsKorviInterface &mDocument;
    const SkinContext &mContext;
    ProblemPlaces &mPlaces;
    StringInfoSink mReport;
    ResourceLookup mLookup;
    PictureCache mCache;
    QSize mScreen;
    QHash<QByteArrayView, Resolution> mResolved;
    QHash<QString, Picture> mPictures;
    std::unique_ptr<ChainValues> mChains;
    // Clean absolute paths of every picture and descriptor found.
    QSet<QString> mUsed;
    QVector<Problem> mProblems;
};
