// SPDX-License-Identifier: MIT
#include "ScriptedEdit.h"

#include "AsciiCase.h"
#include "CommandLine.h"
#include "NodeKey.h"
#include "SaveChanges.h"
#include "SaveLock.h"
#include "SkinReadError.h"
#include "UiFileReader.h"

#include <QCommandLineParser>
#include <QFileInfo>

ScriptedEdit::ScriptedEdit(const QString &name, const QString &usage, int leastRest, int mostRest)
    : mName(name)
    , mUsage(usage)
    , mLeastRest(leastRest)
    , mMostRest(mostRest)
{
}

ScriptedEdit::~ScriptedEdit() = default;

bool ScriptedEdit::start(const QStringList &arguments)
{
    QCommandLineParser parser;
    const QCommandLineOption output(QStringLiteral("o"), QStringLiteral("write to OUT and leave FILE alone"),
                                    QStringLiteral("OUT"));
    parser.addOption(output);
    CommandLine::addCodePageOption(parser);
    if (!parser.parse(QStringList { QStringLiteral("korvi ") + mName } + arguments)) {
        mExitCode = CommandLine::usageError(parser.errorText() + QStringLiteral("\nusage: ") + mUsage);
        return false;
    }
    const QStringList positional = parser.positionalArguments();
    const int rest = int(positional.size()) - 2;
    if (rest < mLeastRest || (mMostRest >= 0 && rest > mMostRest)) {
        mExitCode = CommandLine::usageError(QStringLiteral("usage: ") + mUsage);
        return false;
    }
    mFile = positional.at(0);
    mNodeKey = positional.at(1);
    mRest = positional.mid(2);
    mOutput = parser.value(output);
    const std::optional<SkinCodec> codec = CommandLine::codePage(parser);
    if (!codec) {
        mExitCode = 2;
        return false;
    }
    mDocument.setCodec(*codec);
    if (const QString problem = NodeKey::problemWith(wordOf(mNodeKey)); !problem.isEmpty()) {
        mExitCode = CommandLine::usageError(QStringLiteral("\u201C%1\u201D is not a node key: %2").arg(mNodeKey, problem));
        return false;
    }
    // The file is read, edited and written under its lock, so that edits of
    // one file by several commands at once each land on the one before.
    if (QFileInfo(mFile).isFile()) {
        mLock = std::make_unique<SaveLock>(mFile);
        QString error;
        if (!mLock->lock(error)) {
            mExitCode = fail(error);
            return false;
        }
    }
    try {
        // The file is read alone: what it holds is what gets saved.
        ReadUiFile(mDocument, mFile, false);
    } catch (const SkinReadError &error) {
        // A file that cannot be read whole is not edited at all.
        mExitCode = fail(QString::fromStdString(error.what()));
        return false;
    }
    return true;
}

clsElement *ScriptedEdit::element()
{
    const QByteArray key = wordOf(mNodeKey);
    NodeTarget target;
    if (NodeKey::ownLetterOf(key) == 'U') {
        // The used-layer element itself, not the layer it uses.
        const qsizetype bar = key.lastIndexOf(NodeKey::Separator);
        const QByteArray name = key.mid(bar + 2);
        const NodeTarget parent = bar < 0 ? NodeTarget() : NodeKey::ResolveNodeKey(mDocument, key.left(bar));
        if (parent.element && parent.element->subElementCount() > 0) {
            for (clsElement *child : parent.element->SubElements()) {
                if (child->IsUseLayer() && AsciiCase::sameIgnoringCase(child->strName(), name)) {
                    target.element = child;
                    break;
                }
            }
        }
    } else {
        target = NodeKey::ResolveNodeKey(mDocument, key);
        if (!target.element)
            target = NodeKey::ResolveHeaderNodeKey(mDocument, key);
    }
    if (!target.element) {
        mExitCode = fail(QStringLiteral("%1 names no element of %2").arg(mNodeKey, mFile));
        return nullptr;
    }
    return target.element;
}

int ScriptedEdit::fail(const QString &message)
{
    CommandLine::printErr(QStringLiteral("korvi ") + mName + QStringLiteral(": ") + message);
    return 1;
}

int ScriptedEdit::save()
{
    SaveChanges saver(mDocument);
    saver.setFileForNewElements(mFile);
    if (mLock)
        saver.lockHeldFor(mFile);
    if (!mOutput.isEmpty())
        saver.redirect(mFile, mOutput);
    // Nobody is there to answer: a file changed since it was read, where a
    // change must go, is left as it is.
    const SaveChanges::Result result = saver.save([](const QString &) { return false; });
    switch (result.outcome) {
    case SaveChanges::Result::Outcome::Saved:
    case SaveChanges::Result::Outcome::NothingToSave:
        // The edit is saved; a backup that could not be replaced is still a failure to report.
        return result.error.isEmpty() ? 0 : fail(result.error.trimmed());
    case SaveChanges::Result::Outcome::Cancelled:
        return fail(QStringLiteral("%1 changed on disk since it was read; nothing written").arg(mFile));
    case SaveChanges::Result::Outcome::Failed:
        break;
    }
    return fail(result.error);
}
