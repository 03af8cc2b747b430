// SPDX-License-Identifier: MIT
#include "SkinPort.h"

#include "PicturePort.h"
#include "ResourceLookup.h"
#include "FileReading.h"
#include "SaveChanges.h"
#include "SkinElementWalk.h"
#include "SkinFileNames.h"
#include "SkinFormatName.h"
#include "SkinReadError.h"
#include "SpriteDescriptor.h"
#include "StringInfoSink.h"
#include "UiFileReader.h"
#include "clsElement.h"
#include "clsKorviInterface.h"
#include "clsProperties.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QImageReader>
#include <QImageWriter>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QThreadPool>

#include <atomic>
#include <memory>
#include <mutex>

namespace {

// One folder of the old format and the folder made from it.
struct Target
{
    QString source;
    QString target;
    std::unique_ptr<QTemporaryDir> temp;
    QString aside; // where an old target waits while the new one moves in
};

struct FileJob
{
    enum class Kind { Ui, Picture, Sprite, Copy };
    Kind kind = Kind::Copy;
    QString source;
    // Relative to its target folder, with the format renamed.
    QString relative;
    int target = 0;
    int frames = 1;
    int stripes = 0;
    bool background = false;
};

QString renamed(const QString &text, const QString &from, const QString &to)
{
    int count = 0;
    return QString::fromUtf8(PortNumbers::replaceFormat(text.toUtf8(), from.toUtf8(), to.toUtf8(), count));
}

QString relativeToSkin(const QString &skinDir, const QString &path)
{
    return QDir(skinDir).relativeFilePath(path);
}

// Files go into a temporary folder that only becomes the target, renamed
// whole, once every file is written: a plain write is enough there.
bool writeBytes(const QString &path, const QByteArray &bytes, QString &error)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush()) {
        error = QStringLiteral("cannot write %1: %2").arg(QDir::toNativeSeparators(path), file.errorString());
        return false;
    }
    file.close();
    if (file.error() != QFileDevice::NoError) {
        error = QStringLiteral("cannot write %1: %2").arg(QDir::toNativeSeparators(path), file.errorString());
        return false;
    }
    return true;
}

// Qt finds its picture format plugins the first time a picture is read or
// written, listing its plugin folder by a name pattern. Done here, on the
// thread that starts the workers, so that no worker thread matches a regular
// expression: with the MinGW runtime, a thread that has matched one leaves
// Qt's per-thread matching stack to a destructor that runs after the runtime
// has freed that thread's storage, and the thread's end then reads freed
// memory (under Wine the process never ends; docs/architecture.md).
void loadPictureFormatsHere()
{
    QImageReader::supportedImageFormats();
    QImageWriter::supportedImageFormats();
}

QByteArray readBytes(const QString &path, bool *ok = nullptr)
{
    QByteArray bytes;
    QString error;
    const bool read = FileReading::readWhole(path, bytes, error);
    if (ok)
        *ok = read;
    return bytes;
}

// Sprite counts ("#N") of picture references anywhere in the skin's .ui files,
// by lower-case file name: the frames a picture is cut into.
QHash<QString, int> spriteCounts(const QString &skinDir)
{
    static const QRegularExpression reference(QStringLiteral("([A-Za-z0-9_$\\\\/.\\-]+\\.(?:bmp|jpg|spr))#(\\d+)"),
                                              QRegularExpression::CaseInsensitiveOption);
    QHash<QString, int> counts;
    QDirIterator files(skinDir, { QStringLiteral("*.ui"), QStringLiteral("*.UI") }, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        // The references are ASCII words: byte for character is enough.
        const QString text = SkinCodec::wordText(readBytes(files.next()));
        auto matches = reference.globalMatch(text);
        while (matches.hasNext()) {
            const auto match = matches.next();
            QString name = SkinFileNames::GetFileName(match.captured(1), true).toLower();
            if (name.endsWith(QLatin1String(".spr")))
                name = name.chopped(4) + QStringLiteral(".bmp");
            const int n = match.captured(2).toInt();
            // Frames of several counts: the most, which the others divide
            // when the picture was made for all of them.
            counts[name] = qMax(counts.value(name, 1), n);
        }
    }
    return counts;
}

// The .spr text with the number of every "Stripes" line rescaled; every other
// byte kept.
QByteArray scaledStripes(const QByteArray &text, double sy)
{
    QByteArray out;
    qsizetype at = 0;
    while (at < text.size()) {
        qsizetype end = at;
        while (end < text.size() && text.at(end) != '\n' && text.at(end) != '\r')
            ++end;
        QByteArray line = text.mid(at, end - at);
        const qsizetype equals = line.indexOf('=');
        if (line.toLower().contains("stripes") && equals >= 0) {
            qsizetype first = equals + 1;
            while (first < line.size() && line.at(first) == ' ')
                ++first;
            qsizetype last = first;
            while (last < line.size() && line.at(last) >= '0' && line.at(last) <= '9')
                ++last;
            if (last > first) {
                const qint64 stripes = line.mid(first, last - first).toLongLong();
                const qint64 next = qMax<qint64>(1, PortNumbers::scaled(stripes, sy));
                line = line.left(first) + QByteArray::number(next) + line.mid(last);
            }
        }
        out += line;
        qsizetype lineEnd = end;
        if (lineEnd < text.size() && text.at(lineEnd) == '\r')
            ++lineEnd;
        if (lineEnd < text.size() && text.at(lineEnd) == '\n')
            ++lineEnd;
        out += text.mid(end, lineEnd - end);
        at = lineEnd;
    }
    return out;
}

bool isUnder(const QString &path, const QString &folder)
{
    const QString clean = QDir::cleanPath(path);
    const QString root = QDir::cleanPath(folder) + QLatin1Char('/');
    return clean.startsWith(root, Qt::CaseInsensitive);
}

} // namespace

SkinPort::SkinPort(const Options &options)
    : mOptions(options)
{
}

namespace {

class PortRun
{
public:
    PortRun(const SkinPort::Options &options, SkinPort::Result &result)
        : o(options)
        , mResult(result)
        , mReport(result.report)
    {
    }

    bool run(const SkinPort::Progress &progress)
    {
        return prepare() && listFiles() && makeTemporaryFolders() && work(progress) && commit();
    }

private:
    bool fail(const QString &message)
    {
        mResult.error = message;
        return false;
    }

    bool prepare()
    {
        const QSize from = SkinFormatName::sizeOf(o.from);
        const QSize to = SkinFormatName::sizeOf(o.to);
        if (!from.isValid() || from.isEmpty())
            return fail(QStringLiteral("\"%1\" is not a format (W_H, such as 800_480)").arg(o.from));
        if (!to.isValid() || to.isEmpty())
            return fail(QStringLiteral("\"%1\" is not a format (W_H, such as 1024_600)").arg(o.to));
        if (o.from == o.to)
            return fail(QStringLiteral("the formats are the same"));
        mSkin = QDir::cleanPath(QFileInfo(o.skinDir).absoluteFilePath());
        mScale.sx = double(to.width()) / from.width();
        mScale.sy = double(to.height()) / from.height();
        mReport.aspect = o.aspect == SkinPort::Options::Aspect::Fit ? QStringLiteral("fit") : QStringLiteral("stretch");
        if (o.aspect == SkinPort::Options::Aspect::Fit) {
            const double f = qMin(mScale.sx, mScale.sy);
            mScale.sx = mScale.sy = f;
            mScale.offsetX = int(PortNumbers::scaled(to.width() - PortNumbers::scaled(from.width(), f), 0.5));
            mScale.offsetY = int(PortNumbers::scaled(to.height() - PortNumbers::scaled(from.height(), f), 0.5));
            mCanvas = to;
        }
        mScale.fonts = o.fonts;
        mScale.fromFormat = o.from.toLatin1();
        mScale.toFormat = o.to.toLatin1();
        mReport.fonts = o.fonts == PortScale::Fonts::Keep ? QStringLiteral("keep")
                      : o.fonts == PortScale::Fonts::Map ? o.fontMapFile
                                                         : QStringLiteral("scale");
        if (o.fonts == PortScale::Fonts::Map) {
            bool ok = false;
            const QByteArray map = readBytes(o.fontMapFile, &ok);
            if (!ok)
                return fail(QStringLiteral("cannot read the font map %1").arg(o.fontMapFile));
            QString error;
            if (!PortNumbers::parseFontMap(map, mScale.fontMap, error))
                return fail(QStringLiteral("%1: %2").arg(o.fontMapFile, error));
        }
        mReport.codec = o.codec;
        mReport.fromFormat = o.from;
        mReport.toFormat = o.to;
        mReport.sx = mScale.sx;
        mReport.sy = mScale.sy;
        mReport.dryRun = o.dryRun;

        const QString main = mSkin + QLatin1Char('/') + o.from;
        if (!QFileInfo(main).isDir())
            return fail(QStringLiteral("%1 has no folder %2").arg(QDir::toNativeSeparators(mSkin), o.from));
        addTarget(main, mSkin + QLatin1Char('/') + o.to);
        const QString vga = mSkin + QStringLiteral("/common/vga/");
        if (QFileInfo(vga + o.from).isDir())
            addTarget(vga + o.from, vga + o.to);
        for (const Target &t : mTargets) {
            if (QFileInfo::exists(t.target) && !QFileInfo(t.target).isDir())
                return fail(QStringLiteral("%1 is no folder; nothing written").arg(QDir::toNativeSeparators(t.target)));
            if (QFileInfo::exists(t.target) && !o.force)
                return fail(QStringLiteral("%1 exists already; --force replaces it")
                                .arg(QDir::toNativeSeparators(t.target)));
            mReport.targets << relativeToSkin(mSkin, t.target);
        }
        return true;
    }

    void addTarget(const QString &source, const QString &target)
    {
        Target t;
        t.source = source;
        t.target = target;
        mTargets.push_back(std::move(t));
    }

    bool listFiles()
    {
        mSpriteCounts = spriteCounts(mSkin);
        for (int i = 0; i < int(mTargets.size()); ++i) {
            const QDir source(mTargets[size_t(i)].source);
            QDirIterator files(source.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
            QStringList paths;
            while (files.hasNext())
                paths << files.next();
            paths.sort();
            for (const QString &path : paths)
                addFile(i, source, path);
        }
        return true;
    }

    void addFile(int target, const QDir &source, const QString &path)
    {
        FileJob job;
        job.source = path;
        job.target = target;
        job.relative = renamed(source.relativeFilePath(path), o.from, o.to);
        const QString extension = SkinFileNames::GetExtension(path);
        if (extension == QLatin1String("ui")) {
            job.kind = FileJob::Kind::Ui;
        } else if (extension == QLatin1String("spr")) {
            job.kind = FileJob::Kind::Sprite;
        } else if (extension == QLatin1String("bmp") || extension == QLatin1String("jpg")) {
            job.kind = FileJob::Kind::Picture;
            const QString name = QFileInfo(path).fileName().toLower();
            job.frames = mSpriteCounts.value(name, 1);
            const QString descriptor = path.chopped(4) + QStringLiteral(".spr");
            if (QFileInfo::exists(descriptor))
                job.stripes = SpriteDescriptor::readFile(descriptor).Stripes;
            job.background = target == 0 && job.relative.compare(QStringLiteral("background/default.bmp"),
                                                                   Qt::CaseInsensitive) == 0;
        }
        mJobs.push_back(job);
        mReport.files << relativeToSkin(mSkin, mTargets[size_t(target)].target + QLatin1Char('/') + job.relative);
    }

    bool makeTemporaryFolders()
    {
        if (o.dryRun)
            return true;
        for (Target &t : mTargets) {
            const QFileInfo target(t.target);
            const QString pattern = target.absolutePath() + QStringLiteral("/.") + target.fileName()
                                  + QStringLiteral(".port-XXXXXX");
            t.temp = std::make_unique<QTemporaryDir>(pattern);
            if (!t.temp->isValid())
                return fail(QStringLiteral("cannot write into %1: %2; nothing written")
                                .arg(QDir::toNativeSeparators(target.absolutePath()), t.temp->errorString()));
        }
        return true;
    }

    QString outputPath(const FileJob &job) const
    {
        const Target &t = mTargets[size_t(job.target)];
        return (o.dryRun ? t.target : t.temp->path()) + QLatin1Char('/') + job.relative;
    }

    QString reportName(const FileJob &job) const
    {
        return relativeToSkin(mSkin, mTargets[size_t(job.target)].target + QLatin1Char('/') + job.relative);
    }

    bool work(const SkinPort::Progress &progress)
    {
        std::vector<size_t> pictures;
        for (size_t i = 0; i < mJobs.size(); ++i) {
            if (mJobs[i].kind == FileJob::Kind::Picture)
                pictures.push_back(i);
        }
        const int total = int(mJobs.size());
        std::atomic<int> done { 0 };
        std::vector<PicturePort::Result> results(pictures.size());
        std::mutex errorLock;
        QString pictureError;
        loadPictureFormatsHere();
        QThreadPool pool;
        pool.setMaxThreadCount(o.threads > 0 ? o.threads : qMax(1, QThread::idealThreadCount()));
        for (size_t k = 0; k < pictures.size(); ++k) {
            pool.start([&, k] {
                const FileJob &job = mJobs[pictures[k]];
                results[k] = portPicture(job);
                QString error = results[k].error.isEmpty()
                                  ? QString()
                                  : QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(job.source), results[k].error);
                if (error.isEmpty() && !o.dryRun)
                    writeBytes(outputPath(job), results[k].bytes, error);
                results[k].bytes.clear();
                if (!error.isEmpty()) {
                    const std::lock_guard<std::mutex> lock(errorLock);
                    if (pictureError.isEmpty())
                        pictureError = error;
                }
                ++done;
            });
        }
        // The .ui files, .spr descriptors and other files on this thread,
        // while the pool resizes the pictures.
        bool ok = true;
        for (const FileJob &job : mJobs) {
            if (job.kind == FileJob::Kind::Picture)
                continue;
            if (ok)
                ok = portFile(job);
            ++done;
            if (progress)
                progress(done, total);
        }
        while (!pool.waitForDone(50)) {
            if (progress)
                progress(done, total);
        }
        if (progress)
            progress(total, total);
        if (!ok)
            return false;
        if (!pictureError.isEmpty())
            return fail(pictureError + QStringLiteral("; nothing written"));
        for (size_t k = 0; k < pictures.size(); ++k) {
            const FileJob &job = mJobs[pictures[k]];
            const PicturePort::Result &r = results[k];
            mReport.pictures.push_back({ reportName(job), r.kind, r.from, r.to, r.frames });
            if (!r.note.isEmpty())
                mReport.note(r.noteKind, reportName(job), {}, {}, {}, r.note);
        }
        return true;
    }

    PicturePort::Result portPicture(const FileJob &job) const
    {
        PicturePort::Request request;
        request.path = job.source;
        request.bytes = readBytes(job.source);
        request.sx = mScale.sx;
        request.sy = mScale.sy;
        request.frames = job.frames;
        request.sizeOnly = o.dryRun;
        request.stripes = job.stripes;
        if (job.background && mCanvas.isValid())
            request.canvas = mCanvas;
        return PicturePort::port(request);
    }

    bool portFile(const FileJob &job)
    {
        switch (job.kind) {
        case FileJob::Kind::Ui:
            return portUi(job);
        case FileJob::Kind::Sprite: {
            const QByteArray text = scaledStripes(readBytes(job.source), mScale.sy);
            QString error;
            if (!o.dryRun && !writeBytes(outputPath(job), text, error))
                return fail(error);
            return true;
        }
        case FileJob::Kind::Copy: {
            QString error;
            if (!o.dryRun && !writeBytes(outputPath(job), readBytes(job.source), error))
                return fail(error);
            return true;
        }
        case FileJob::Kind::Picture:
            break;
        }
        return true;
    }

    bool portUi(const FileJob &job)
    {
        clsKorviInterface document;
        document.setCodec(o.codec);
        try {
            ReadUiFile(document, job.source, false);
        } catch (const SkinReadError &error) {
            return fail(QStringLiteral("%1 cannot be read to its end (%2); nothing written")
                            .arg(QDir::toNativeSeparators(job.source), QString::fromStdString(error.what())));
        }
        noteSharedPictures(document, job);
        const auto before = PortNumbers::screenBoxes(document);
        PortNumbers::portDocument(document, mScale, reportName(job), mReport);
        PortNumbers::noteBoxChanges(before, PortNumbers::screenBoxes(document), SkinFormatName::sizeOf(o.from),
                                    SkinFormatName::sizeOf(o.to), reportName(job), mReport);
        if (o.dryRun)
            return true;
        const QString output = outputPath(job);
        QDir().mkpath(QFileInfo(output).absolutePath());
        SaveChanges saver(document);
        saver.redirect(job.source, output);
        const SaveChanges::Result saved = saver.save([](const QString &) { return false; });
        if (!saved.ok())
            return fail(QStringLiteral("%1: %2; nothing written")
                            .arg(QDir::toNativeSeparators(job.source),
                                 saved.error.isEmpty() ? QStringLiteral("changed while it was read") : saved.error));
        return true;
    }

    // Pictures of common/ outside the format folders serve every format and
    // keep their size: each object that uses one is named.
    void noteSharedPictures(const clsKorviInterface &document, const FileJob &job)
    {
        SkinContext context;
        context.UiFilePath = job.source;
        context.SkinDirectory = mSkin;
        context.SkinFormat = o.from;
        StringInfoSink quiet;
        const ResourceLookup lookup(context, quiet);
        const QString common = mSkin + QStringLiteral("/common");
        const QString vga = common + QStringLiteral("/vga");
        SkinElementWalk::forEach(document, [&](const SkinElementWalk::Visit &visit) {
            for (const char *key : { "bmp", "sprind", "iconspr" }) {
                const int index = visit.element.Properties().indexOf(key);
                if (index < 0)
                    continue;
                const QByteArray value = visit.element.Properties().valueAt(index).toByteArray();
                const QString reference = o.codec.toText(value);
                const QString found = lookup.LocateSkinFile(reference, reference.contains(QLatin1Char('$')));
                if (!QFileInfo::exists(found) || !isUnder(found, common) || isUnder(found, vga))
                    continue;
                mReport.note(QStringLiteral("shared-picture"), reportName(job), visit.nodeKey, key, value,
                             QStringLiteral("%1 uses %2 from common/, which keeps its size")
                                 .arg(SkinCodec::wordText(visit.element.strName()), reference));
            }
        });
    }

    bool commit()
    {
        if (o.dryRun)
            return true;
        std::vector<Target *> moved;
        for (Target &t : mTargets) {
            if (QFileInfo::exists(t.target)) {
                t.aside = t.temp->path() + QStringLiteral(".old");
                if (!QDir().rename(t.target, t.aside)) {
                    rollBack(moved);
                    return fail(QStringLiteral("cannot replace %1; nothing written").arg(QDir::toNativeSeparators(t.target)));
                }
            }
            if (!QDir().rename(t.temp->path(), t.target)) {
                if (!t.aside.isEmpty())
                    QDir().rename(t.aside, t.target);
                t.aside.clear();
                rollBack(moved);
                return fail(QStringLiteral("cannot make %1; nothing written").arg(QDir::toNativeSeparators(t.target)));
            }
            moved.push_back(&t);
        }
        for (Target &t : mTargets) {
            if (!t.aside.isEmpty())
                QDir(t.aside).removeRecursively();
        }
        return true;
    }

    // The targets already renamed into place go back to their temporary
    // folders (removed with them), and old targets come back.
    void rollBack(const std::vector<Target *> &moved)
    {
        for (Target *t : moved) {
            QDir().rename(t->target, t->temp->path());
            if (!t->aside.isEmpty())
                QDir().rename(t->aside, t->target);
        }
    }

    const SkinPort::Options &o;
    SkinPort::Result &mResult;
    PortReport &mReport;
    QString mSkin;
    PortScale mScale;
    QSize mCanvas;
    std::vector<Target> mTargets;
    std::vector<FileJob> mJobs;
    QHash<QString, int> mSpriteCounts;
};

} // namespace

SkinPort::Result SkinPort::run(const Progress &progress)
{
    Result result;
    PortRun run(mOptions, result);
    result.ok = run.run(progress);
    return result;
}
