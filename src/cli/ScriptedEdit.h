// SPDX-License-Identifier: MIT
#pragma once

#include "clsKorviInterface.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <memory>

class SaveLock;

// What korvi set, unset and remove share: the arguments FILE.ui NODEKEY ...
// [-o OUT], the file read alone, the element the node key names, and the
// changes saved in place as the editor's Save Changes saves them.
class ScriptedEdit
{
public:
    // `usage` is printed on a usage error; `leastRest` and `mostRest` bound
    // the number of arguments after NODEKEY (-1: no bound).
    ScriptedEdit(const QString &name, const QString &usage, int leastRest, int mostRest);
    ~ScriptedEdit();

    // Parses the arguments and reads the file; false with `exitCode` set when
    // the command is to stop.
    bool start(const QStringList &arguments);
    int exitCode() const { return mExitCode; }

    clsKorviInterface &document() { return mDocument; }
    // The element NODEKEY names (a "U" segment names the used-layer element
    // itself); nullptr after printing why, with exitCode() 1.
    clsElement *element();
    // The arguments after NODEKEY.
    QStringList rest() const { return mRest; }

    // Prints a failure of the work and returns 1.
    int fail(const QString &message);
    // Saves the changes (to OUT when given) and returns the exit code.
    int save();

    // A node key or a key typed on the command line: ASCII words.
    static QByteArray wordOf(const QString &text) { return SkinCodec::wordBytes(text); }

private:
    QString mName;
    QString mUsage;
    int mLeastRest;
    int mMostRest;
    int mExitCode = 0;
    QString mFile;
    QString mNodeKey;
    QString mOutput;
    QStringList mRest;
    clsKorviInterface mDocument;
    std::unique_ptr<SaveLock> mLock;
};
