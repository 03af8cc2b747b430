// SPDX-License-Identifier: MIT
#include "SaveChanges.h"

#include "AtomicFileWriter.h"
#include "ChangeFinder.h"
#include "DocumentMatch.h"
#include "SaveLock.h"
#include "SkinBackup.h"
#include "SkinReadError.h"
#include "SourceScan.h"
#include "TagLineCheck.h"
#include "UiFileReader.h"
#include "UiFileWriter.h"
#include "clsKorviInterface.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <optional>
#include <cstring>

namespace {

// The file's bytes on disk now; false when it cannot be read whole.
bool bytesOnDisk(const QString &path, QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    try {
        bytes = UiFileReader::readWhole(file, path);
    } catch (const SkinReadError &) {
        return false;
    }
    return true;
}

// Whether the file on disk holds exactly `bytes`, compared a piece at a time
// so that a large file is not held twice.
bool sameOnDisk(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) || file.size() != bytes.size())
        return false;
    constexpr qsizetype kPiece = 1 << 20;
    QByteArray piece(qMin(kPiece, bytes.size()), Qt::Uninitialized);
    for (qsizetype at = 0; at < bytes.size();) {
        const qint64 read = file.read(piece.data(), qMin(kPiece, bytes.size() - at));
        if (read <= 0 || memcmp(piece.constData(), bytes.constData() + at, size_t(read)) != 0)
            return false;
        at += read;
    }
    char more;
    return file.read(&more, 1) == 0;
}

} // namespace

SaveChanges::SaveChanges(clsKorviInterface &document)
    : mDocument(document)
{
}

void SaveChanges::setFileForNewElements(const QString &path)
{
    mFileForNewElements = path;
    // The changes go elsewhere now: what was found is found again.
    mFound.reset();
    mRewritten.reset();
}

// The change finder runs once for what plan() shows and save() then writes:
// the document does not change between the two (the questions asked in
// between are modal). The finder in its rewriting mode runs only when some
// splice does not read back as edited.
const std::vector<FileChanges> &SaveChanges::changes(bool rewriteEditedTags) const
{
    std::optional<std::vector<FileChanges>> &kept = rewriteEditedTags ? mRewritten : mFound;
    if (!kept) {
        ChangeFinder finder(mDocument, fileForNewElements());
        if (rewriteEditedTags)
            finder.rewriteEditedTags();
        kept = finder.find();
        ++mFinderRuns;
    }
    return *kept;
}

// For a save: what was found, taken out, so that the next question after the
// save (whose writing changes the document's records) finds anew.
std::vector<FileChanges> SaveChanges::takeChanges(bool rewriteEditedTags)
{
    changes(rewriteEditedTags);
    std::optional<std::vector<FileChanges>> &kept = rewriteEditedTags ? mRewritten : mFound;
    std::vector<FileChanges> taken = std::move(*kept);
    kept.reset();
    return taken;
}

void SaveChanges::redirect(const QString &source, const QString &output)
{
    mRedirects.insert(source, output);
}

int SaveChanges::fileForNewElements() const
{
    return mFileForNewElements.isEmpty() ? 0 : mDocument.Sources().numberOf(mFileForNewElements);
}

std::vector<SaveChanges::Pending> SaveChanges::pending() const
{
    const bool planned = mFound.has_value();
    std::vector<Pending> list = pendingFound();
    // Asked between edits, the answer is not kept: only plan() keeps it.
    if (!planned) {
        mFound.reset();
        mRewritten.reset();
    }
    return list;
}

std::vector<SaveChanges::Pending> SaveChanges::plan()
{
    return pendingFound();
}

std::vector<SaveChanges::Pending> SaveChanges::pendingFound() const
{
    std::vector<Pending> list;
    const std::vector<FileChanges> &found = changes(false);
    for (const FileChanges &changes : found) {
        QStringList problems = changes.problems;
        // A change that cannot be spliced in may still be saved with its tag
        // written anew (see save()).
        if (changes.file > 0 && !problems.isEmpty()) {
            for (const FileChanges &other : this->changes(true)) {
                if (other.file == changes.file)
                    problems = other.problems;
            }
        }
        list.push_back({ changes.path, changes.changeCount, problems });
    }
    return list;
}

QString SaveChanges::summary(const std::vector<Pending> &pending)
{
    int changes = 0;
    int files = 0;
    for (const Pending &p : pending) {
        changes += p.changes;
        files += p.changes > 0 ? 1 : 0;
    }
    if (changes == 0)
        return {};
    return QStringLiteral("%1 %2 in %3 %4")
        .arg(changes)
        .arg(changes == 1 ? QStringLiteral("change") : QStringLiteral("changes"))
        .arg(files)
        .arg(files == 1 ? QStringLiteral("file") : QStringLiteral("files"));
}

QString SaveChanges::changedOnDiskQuestion(const QString &path)
{
    return QStringLiteral("%1 changed on disk since it was opened. Overwrite it with your version?")
        .arg(QFileInfo(path).fileName());
}

// The new bytes read alone, as the file was read into the document (with its
// imported flag): they must give exactly the document's elements of that
// file, and stop at a reading error exactly when `readsWhole` is false.
std::shared_ptr<clsKorviInterface> SaveChanges::readAlone(int file, const QByteArray &bytes, bool readsWhole) const
{
    const SkinSourceFile &source = *mDocument.Sources().file(file);
    auto alone = std::make_shared<clsKorviInterface>();
    bool failed = false;
    try {
        UiFileReader(*alone, source.imported()).readBytes(bytes, source.path());
    } catch (const SkinReadError &) {
        failed = true;
    }
    if (failed == readsWhole || alone->Sources().count() != 1)
        return nullptr;
    if (!DocumentMatch::sameAsFile(mDocument, file, file == fileForNewElements(), *alone))
        return nullptr;
    return alone;
}

// A file whose changes do not read back as edited: which element, and why.
QString SaveChanges::whyRefused(const Plan &plan) const
{
    const SkinSourceFile &source = *mDocument.Sources().file(plan.file);
    QString error = QStringLiteral("%1: the changes cannot be saved in place so that the file reads back as edited")
                        .arg(source.path());
    QByteArray bytes;
    const QString why = plan.edits.apply(source.bytes(), bytes)
        ? whyNotReadBack(plan.file, bytes, source.errorLine() == 0)
        : QStringLiteral("two changes overlap");
    if (!why.isEmpty())
        error += QStringLiteral(":\n") + why;
    return error;
}

// In words, where the new bytes read alone stop giving the document's
// elements of the file.
QString SaveChanges::whyNotReadBack(int file, const QByteArray &bytes, bool readsWhole) const
{
    const SkinSourceFile &source = *mDocument.Sources().file(file);
    clsKorviInterface alone;
    try {
        UiFileReader(alone, source.imported()).readBytes(bytes, source.path());
    } catch (const SkinReadError &error) {
        if (readsWhole)
            return QStringLiteral("line %1 would not read: %2").arg(error.line()).arg(error.message());
    }
    return DocumentMatch::firstDifference(mDocument, file, file == fileForNewElements(), alone);
}

// Edits that only change tag lines of elements leave every other line, and
// the reader's state from line to line, as they were: reading each such tag
// line again, with its edits made, and finding its element, tells that the
// whole file reads back as edited. A line is read from a copy of its own
// bytes, followed by a line that the reading must not take (unless the line
// is the last): a quoted value that now runs on fails the check rather than
// stopping at the end of the copy.
bool SaveChanges::tagLinesReadBack(const FileChanges &changes) const
{
    const SkinSourceFile &source = *mDocument.Sources().file(changes.file);
    const QByteArray &bytes = source.bytes();
    if (!changes.edits.fits(bytes.size()))
        return false;
    const std::vector<SourceEdits::Edit> edits = changes.edits.sorted();
    std::vector<qsizetype> lines;
    size_t placed = 0;
    TagLineCheck check;
    for (const clsElement *element : changes.edited) {
        const qsizetype begin = source.element(element->sourceRecord()).tagLine;
        if (std::find(lines.begin(), lines.end(), begin) != lines.end())
            return false;
        lines.push_back(begin);
        const SourceScan::Line old = SourceScan::scanLine(bytes, begin);
        SourceEdits own;
        auto edit = std::upper_bound(edits.begin(), edits.end(), begin,
                                     [](qsizetype at, const SourceEdits::Edit &e) { return at < e.begin; });
        for (; edit != edits.end() && edit->end <= old.end; ++edit) {
            own.replace(edit->begin - begin, edit->end - begin, edit->text);
            ++placed;
        }
        QByteArray line;
        if (!own.apply(bytes.mid(begin, old.next - begin), line))
            return false;
        const qsizetype lineSize = line.size();
        if (old.next < bytes.size())
            line += "\r\n";
        if (!check.sameAsRead(line, 0, *element) || SourceScan::scanLine(line, 0).next != lineSize)
            return false;
    }
    // Every edit lies within one of those lines.
    return placed == edits.size();
}

// The plan for one file: its bytes with the changed parts rewritten, checked
// by reading them back. False when they would not read back as edited.
bool SaveChanges::makePlan(Plan &plan, const FileChanges *fileChanges) const
{
    const SkinSourceFile &source = *mDocument.Sources().file(plan.file);
    if (fileChanges && !fileChanges->problems.isEmpty())
        return false;
    plan.edits = fileChanges ? fileChanges->edits : SourceEdits();
    plan.target = mRedirects.value(source.path(), source.path());
    plan.quick = fileChanges && fileChanges->onlyTagLines && tagLinesReadBack(*fileChanges);
    plan.wholeText = !plan.quick;
    plan.newBytes.clear();
    const bool applied = plan.quick || plan.edits.apply(source.bytes(), plan.newBytes);
    return applied && (plan.quick || (plan.alone = readAlone(plan.file, plan.newBytes, source.errorLine() == 0)));
}

SaveChanges::Result SaveChanges::save(const AskOverwrite &askOverwrite, const Progress &progress)
{
    Result result;
    std::vector<Plan> plans;
    const std::vector<FileChanges> found = takeChanges(false);
    mRewritten.reset();
    // New elements that no file is to receive.
    if (!found.empty() && found.front().file == 0) {
        result.outcome = Result::Outcome::Failed;
        result.error = found.front().problems.join(QLatin1Char('\n'));
        return result;
    }
    std::vector<int> files;
    for (const FileChanges &changes : found)
        files.push_back(changes.file);
    // A redirected file is written even without a change.
    for (auto it = mRedirects.cbegin(); it != mRedirects.cend(); ++it) {
        const int file = mDocument.Sources().numberOf(it.key());
        if (file > 0 && std::find(files.begin(), files.end(), file) == files.end())
            files.push_back(file);
    }
    // Made only when some splice does not read back as edited.
    std::optional<std::vector<FileChanges>> rewritten;
    const auto changesOf = [](const std::vector<FileChanges> &all, int file) -> const FileChanges * {
        for (const FileChanges &changes : all) {
            if (changes.file == file)
                return &changes;
        }
        return nullptr;
    };
    for (const int file : files) {
        Plan plan;
        plan.file = file;
        const FileChanges *spliced = changesOf(found, file);
        if (!makePlan(plan, spliced)) {
            // The edited tags written anew in the writer's layout.
            if (!rewritten)
                rewritten = takeChanges(true);
            if (!makePlan(plan, changesOf(*rewritten, file))) {
                result.outcome = Result::Outcome::Failed;
                result.error = spliced && !spliced->problems.isEmpty() ? spliced->problems.join(QLatin1Char('\n'))
                                                                       : whyRefused(plan);
                return result;
            }
        }
        plans.push_back(std::move(plan));
    }
    if (plans.empty())
        return result;
    // From the check for a change on disk to the last write, no other save of
    // these files runs.
    std::vector<std::unique_ptr<SaveLock>> locks;
    if (!lockTargets(plans, locks, result))
        return result;
    // Every question is answered before anything is written: Cancel writes
    // nothing at all.
    for (Plan &plan : plans) {
        if (!prepare(plan, askOverwrite, result))
            return result;
    }
    // A file written becomes the source of its elements at once, so that a
    // failure with a later file leaves the document knowing what is on disk.
    int written = 0;
    if (progress)
        progress(written, int(plans.size()));
    for (const Plan &plan : plans) {
        if (!write(plan, result))
            return result;
        takeNewRecords(plan, result);
        if (progress)
            progress(++written, int(plans.size()));
    }
    result.outcome = Result::Outcome::Saved;
    return result;
}

// A file changed on disk since it was read takes the changes onto its new
// text when every changed part still stands there; otherwise the caller says
// whether to overwrite it.
bool SaveChanges::prepare(Plan &plan, const AskOverwrite &askOverwrite, Result &result) const
{
    const SkinSourceFile &source = *mDocument.Sources().file(plan.file);
    if (plan.target != source.path())
        return true;
    if (sameOnDisk(source.path(), source.bytes()))
        return true;
    QByteArray disk;
    const bool readable = bytesOnDisk(source.path(), disk);
    SourceEdits moved;
    if (readable && plan.edits.moveOnto(source.bytes(), disk, moved)) {
        QByteArray merged;
        moved.apply(disk, merged);
        plan.newBytes = merged;
        plan.wholeText = true;
        plan.merged = true;
        return true;
    }
    if (askOverwrite && askOverwrite(source.path()))
        return true;
    result.outcome = Result::Outcome::Cancelled;
    return false;
}

bool SaveChanges::lockTargets(const std::vector<Plan> &plans, std::vector<std::unique_ptr<SaveLock>> &locks,
                              Result &result) const
{
    // Always taken in the same order, so that two saves of the same files
    // never wait for each other.
    QStringList targets;
    for (const Plan &plan : plans)
        targets << plan.target;
    targets.sort();
    targets.removeDuplicates();
    for (const QString &target : targets) {
        if (mHeldLocks.contains(target))
            continue;
        auto lock = std::make_unique<SaveLock>(target);
        QString error;
        if (!lock->lock(error)) {
            result.outcome = Result::Outcome::Failed;
            result.error = QStringLiteral("Error saving file: ") + error;
            return false;
        }
        locks.push_back(std::move(lock));
    }
    return true;
}

bool SaveChanges::write(const Plan &plan, Result &result) const
{
    QString error;
    auto failed = [&](const QString &description) {
        result.outcome = Result::Outcome::Failed;
        result.error = QStringLiteral("Error saving file: ") + description;
        return false;
    };
    SkinBackup backup(plan.target);
    if (!backup.keep(error))
        return failed(error);
    AtomicFileWriter file(plan.target);
    if (!file.open() || !writeText(plan, file) || !file.commit())
        return failed(file.errorString());
    result.written << plan.target;
    // The file is saved, and the document takes it as such; only the backup
    // is behind, which is said but does not undo the save.
    if (!backup.finish(error))
        result.error += QStringLiteral("%1 was saved, but its backup could not be replaced: %2\n").arg(plan.target, error);
    return true;
}

// The new text, or the kept bytes with the edits made on the way, so that a
// large file with a small change is not copied before it is written.
bool SaveChanges::writeText(const Plan &plan, AtomicFileWriter &file) const
{
    const auto put = [&file](const char *data, qsizetype size) { return file.write(data, size); };
    if (plan.wholeText)
        return put(plan.newBytes.constData(), plan.newBytes.size());
    const QByteArray &bytes = mDocument.Sources().file(plan.file)->bytes();
    qsizetype at = 0;
    for (const SourceEdits::Edit &edit : plan.edits.sorted()) {
        if (!put(bytes.constData() + at, edit.begin - at) || !put(edit.text.constData(), edit.text.size()))
            return false;
        at = edit.end;
    }
    return put(bytes.constData() + at, bytes.size() - at);
}

// The written file becomes the document's source of its elements, so that the
// next save compares with what is on disk now.
void SaveChanges::takeNewRecords(const Plan &plan, Result &result)
{
    const SkinSourceFile &source = *mDocument.Sources().file(plan.file);
    if (plan.target != source.path())
        return;
    if (plan.quick && !plan.merged) {
        // Whole lines only moved: every record keeps its element.
        std::vector<SourceEdits::Edit> edits = plan.edits.sorted();
        std::vector<std::pair<qsizetype, qsizetype>> moves;
        qsizetype delta = 0;
        for (const SourceEdits::Edit &edit : edits) {
            delta += edit.text.size() - (edit.end - edit.begin);
            moves.emplace_back(edit.end, delta);
        }
        const auto shift = [&moves](qsizetype offset) {
            auto after = std::upper_bound(moves.begin(), moves.end(), offset,
                                          [](qsizetype at, const std::pair<qsizetype, qsizetype> &m) { return at < m.first; });
            return after == moves.begin() ? offset : offset + std::prev(after)->second;
        };
        if (!mDocument.Sources().file(plan.file)->takeEdits(plan.edits, shift))
            result.reopen << source.path();
        return;
    }
    std::shared_ptr<clsKorviInterface> alone = plan.alone;
    if (plan.merged || !alone) {
        alone = readAlone(plan.file, plan.newBytes, source.errorLine() == 0);
        if (!alone) {
            result.reopen << source.path();
            return;
        }
    }
    takeReading(plan.file, *alone);
}

// The elements of the file take their records in the newer reading, which
// takes the next number (or the same one, when there are no more numbers).
void SaveChanges::takeReading(int file, clsKorviInterface &alone)
{
    const bool receivesNew = file == fileForNewElements();
    const int newNumber = mDocument.Sources().count() < SkinSources::kMostFiles ? mDocument.Sources().count() + 1 : file;
    DocumentMatch::takeRecords(mDocument, file, receivesNew, alone, newNumber);
    mDocument.Sources().supersede(file, alone.Sources().take(1));
}

bool SaveChanges::takeWholeFileWritten(const QString &path)
{
    mFound.reset();
    mRewritten.reset();
    const int file = mDocument.Sources().numberOf(path);
    if (file == 0)
        return true;
    QByteArray bytes;
    if (!bytesOnDisk(path, bytes))
        return false;
    // What was written was the whole document: it reads to its end.
    const std::shared_ptr<clsKorviInterface> alone = readAlone(file, bytes, true);
    if (!alone)
        return false;
    takeReading(file, *alone);
    return true;
}

int SaveChanges::filesOfWrittenElements() const
{
    QList<int> files;
    const int forNew = fileForNewElements();
    for (const clsElements *elements : { &mDocument.Headers(), &mDocument.Templates(), &mDocument.Fonts(), &mDocument.Layers() }) {
        for (const clsElement *element : *elements) {
            if (element->IsImported)
                continue;
            const int file = DocumentMatch::isFromAFile(mDocument, *element) ? element->sourceFile() : forNew;
            if (!files.contains(file))
                files << file;
        }
    }
    return int(files.size());
}

bool SaveChanges::takeWholeDocumentAt(const QString &path)
{
    mFound.reset();
    mRewritten.reset();
    QByteArray bytes;
    if (!bytesOnDisk(path, bytes))
        return false;
    clsKorviInterface alone;
    try {
        UiFileReader(alone, false).readBytes(bytes, path);
    } catch (const SkinReadError &) {
        return false;
    }
    if (alone.Sources().count() != 1 || !DocumentMatch::sameAsWholeDocument(mDocument, alone))
        return false;
    SkinSources &sources = mDocument.Sources();
    const int number = sources.adopt(alone.Sources().take(1));
    if (number == 0)
        return false;
    DocumentMatch::takeWholeDocumentRecords(mDocument, alone, number);
    // The files the written elements were read from hold none of them now:
    // they keep no records, so that nothing is ever written back to them.
    for (int file = 1; file < number; ++file) {
        if (sources.file(file) && !sources.file(file)->imported())
            sources.replace(file, std::make_unique<SkinSourceFile>(QString(), QByteArray(), false));
    }
    return true;
}
