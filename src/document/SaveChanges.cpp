// SPDX-License-Identifier: MIT
#include "SaveChanges.h"

#include "DocumentMatch.h"
#include "SkinReadError.h"
#include "SourceScan.h"
#include "TagLineCheck.h"
#include "UiFileReader.h"
#include "UiFileWriter.h"
#include "clsKorviInterface.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <algorithm>

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

} // namespace

SaveChanges::SaveChanges(clsKorviInterface &document)
    : mDocument(document)
{
}

void SaveChanges::setFileForNewElements(const QString &path)
{
    mFileForNewElements = path;
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
    std::vector<Pending> list;
    for (const FileChanges &changes : ChangeFinder(mDocument, fileForNewElements()).find())
        list.push_back({ changes.path, changes.changeCount, changes.problems });
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
// file, and stop at a reading error only where the file read into the
// document did too.
std::shared_ptr<clsKorviInterface> SaveChanges::readAlone(int file, const QByteArray &bytes) const
{
    const SkinSourceFile &source = *mDocument.Sources().file(file);
    auto alone = std::make_shared<clsKorviInterface>();
    bool failed = false;
    try {
        UiFileReader(*alone, source.imported()).readBytes(bytes, source.path());
    } catch (const SkinReadError &) {
        failed = true;
    }
    if (failed != (source.errorLine() > 0) || alone->Sources().count() != 1)
        return nullptr;
    if (!DocumentMatch::sameAsFile(mDocument, file, file == fileForNewElements(), *alone))
        return nullptr;
    return alone;
}

// Edits that only change tag lines of elements leave every other line, and
// the reader's state from line to line, as they were: reading each such tag
// line again, where it now stands, and finding its element, tells that the
// whole file reads back as edited.
bool SaveChanges::tagLinesReadBack(const FileChanges &changes, const QByteArray &newBytes) const
{
    const SkinSourceFile &source = *mDocument.Sources().file(changes.file);
    std::vector<std::pair<qsizetype, qsizetype>> lines;
    TagLineCheck check;
    for (const clsElement *element : changes.edited) {
        const qsizetype begin = source.element(element->sourceRecord()).tagLine;
        const SourceScan::Line old = SourceScan::scanLine(source.bytes(), begin);
        const qsizetype newBegin = changes.edits.shifted(begin);
        if (!check.sameAsRead(newBytes, newBegin, *element)
            || SourceScan::scanLine(newBytes, newBegin).next != changes.edits.shifted(old.next))
            return false;
        lines.emplace_back(begin, old.end);
    }
    // Every edit lies within one of those lines.
    for (const SourceEdits::Edit &edit : changes.edits.edits()) {
        const bool inside = std::any_of(lines.begin(), lines.end(), [&](const std::pair<qsizetype, qsizetype> &line) {
            return edit.begin > line.first && edit.end <= line.second;
        });
        if (!inside)
            return false;
    }
    return true;
}

SaveChanges::Result SaveChanges::save(const AskOverwrite &askOverwrite)
{
    Result result;
    std::vector<Plan> plans;
    const std::vector<FileChanges> found = ChangeFinder(mDocument, fileForNewElements()).find();
    QStringList problems;
    for (const FileChanges &changes : found)
        problems += changes.problems;
    if (!problems.isEmpty()) {
        result.outcome = Result::Outcome::Failed;
        result.error = problems.join(QLatin1Char('\n'));
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
    for (const int file : files) {
        Plan plan;
        plan.file = file;
        const FileChanges *fileChanges = nullptr;
        for (const FileChanges &changes : found) {
            if (changes.file == file)
                fileChanges = &changes;
        }
        if (fileChanges)
            plan.edits = fileChanges->edits;
        const SkinSourceFile &source = *mDocument.Sources().file(file);
        plan.target = mRedirects.value(source.path(), source.path());
        const bool applied = plan.edits.apply(source.bytes(), plan.newBytes);
        plan.quick = applied && fileChanges && fileChanges->onlyTagLines && tagLinesReadBack(*fileChanges, plan.newBytes);
        if (!applied || (!plan.quick && !(plan.alone = readAlone(file, plan.newBytes)))) {
            result.outcome = Result::Outcome::Failed;
            result.error = QStringLiteral("%1: the changes cannot be saved in place so that the file reads back as edited")
                               .arg(source.path());
            return result;
        }
        plans.push_back(std::move(plan));
    }
    if (plans.empty())
        return result;
    // Every question is answered before anything is written: Cancel writes
    // nothing at all.
    for (Plan &plan : plans) {
        if (!prepare(plan, askOverwrite, result))
            return result;
    }
    // A file written becomes the source of its elements at once, so that a
    // failure with a later file leaves the document knowing what is on disk.
    for (const Plan &plan : plans) {
        if (!write(plan, result))
            return result;
        takeNewRecords(plan, result);
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
    QByteArray disk;
    const bool readable = bytesOnDisk(source.path(), disk);
    if (readable && disk == source.bytes())
        return true;
    SourceEdits moved;
    if (readable && plan.edits.moveOnto(source.bytes(), disk, moved)) {
        QByteArray merged;
        moved.apply(disk, merged);
        plan.newBytes = merged;
        plan.merged = true;
        return true;
    }
    if (askOverwrite && askOverwrite(source.path()))
        return true;
    result.outcome = Result::Outcome::Cancelled;
    return false;
}

bool SaveChanges::write(const Plan &plan, Result &result) const
{
    QString error;
    auto failed = [&](const QString &description) {
        result.outcome = Result::Outcome::Failed;
        result.error = QStringLiteral("Error saving file: ") + description;
        return false;
    };
    if (!UiFileWriter::makeBackup(plan.target, error))
        return failed(error);
    QSaveFile file(plan.target);
    if (!file.open(QIODevice::WriteOnly))
        return failed(file.errorString());
    if (file.write(plan.newBytes) != plan.newBytes.size()) {
        const QString description = file.errorString();
        file.cancelWriting();
        return failed(description);
    }
    if (!file.commit())
        return failed(file.errorString());
    result.written << plan.target;
    return true;
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
        mDocument.Sources().replace(plan.file, source.moved(plan.newBytes, shift));
        return;
    }
    std::shared_ptr<clsKorviInterface> alone = plan.alone;
    if (plan.merged || !alone) {
        alone = readAlone(plan.file, plan.newBytes);
        if (!alone) {
            result.reopen << source.path();
            return;
        }
    }
    const bool receivesNew = plan.file == fileForNewElements();
    // The newer reading takes the next number (or the same one, when there
    // are no more numbers).
    const int newNumber = mDocument.Sources().count() < SkinSources::kMostFiles ? mDocument.Sources().count() + 1 : plan.file;
    DocumentMatch::takeRecords(mDocument, plan.file, receivesNew, *alone, newNumber);
    mDocument.Sources().supersede(plan.file, alone->Sources().take(1));
}
