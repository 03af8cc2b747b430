// SPDX-License-Identifier: MIT
#pragma once

#include "ImageFile.h"
#include "InfoSink.h"
#include "SkinCodec.h"
#include "SkinContext.h"

#include <QByteArray>
#include <QString>

// Finds the files a skin names by bare file name, probing a fixed list of
// candidate folders in a fixed order (U is the folder of the open .ui file, D the
// skin directory, R the skin format, F the file name; "/" is the host separator):
//
//   ordinary reference            shared reference (contains "$")
//   1. U/../F                     1. U/../../common/F
//   2. D/R/F          (D and R)   2. D/common/F          (D)
//   3. U/../../common/F           3. U/../F
//   4. D/common/F     (D)         4. D/R/F               (D and R)
//   5. D/common/vga/R/F (D and R) 5. D/common/vga/R/F    (D and R)
//
// Paths are joined as plain text: nothing is normalised, so "U/../F" exists only
// when U does. Each failed probe adds the line
//   "Unable to locate " + F + " in " + CollapseParentDirs(path) + CR LF
// to a report; when every probe fails the report and one more CR LF go to the
// information sink as a whole. A found file writes nothing. There is no cache:
// every lookup probes the disk again, and reports again.
class ResourceLookup
{
public:
    // Both are kept by reference and must outlive the lookup.
    ResourceLookup(const SkinContext &context, InfoSink &info);

    // The first candidate that exists; when none does, the last candidate built
    // (which does not exist), after the report went to the sink. Only
    // GetFileName(reference, true) of the reference counts.
    QString LocateSkinFile(const QString &reference, bool shared) const;

    // Resolves a picture reference ("pic.bmp", "$icon.bmp", "button.spr#3",
    // "sub\pic.jpg") to a picture file with its sprite values. A .spr reference
    // reads its descriptor and then looks for the .bmp of the same name. The
    // path is empty when nothing was found, or when the extension is none of
    // bmp, jpg and spr.
    ImageFile GetImageFile(const QString &reference) const;
    // The same for a reference as it stands in a skin property: 8-bit text in
    // the skin's code page, the code page the skin's maker named the file in.
    ImageFile GetImageFile(const QByteArray &reference, const SkinCodec &codec) const;

    // The canvas background: U/../background/default.bmp, else (D and R set)
    // D/R/background/default.bmp. Missing probes are reported under the file name
    // "BACKGROUND default.bmp". Returns the found path, or empty.
    QString LocateBackground() const;

    // Removes "/../" steps (with the host separator) textually: while the path
    // holds one at 1-based position p >= 2, the text from just after the last
    // separator before p up to the end of the step is dropped.
    // "C:/skins/a/ui/../../common/x.bmp" gives "C:/skins/common/x.bmp"; "/../x"
    // stays as it is.
    static QString CollapseParentDirs(const QString &path);
    static QString CollapseParentDirs(const QString &path, QChar separator);

    // Appends one report line for a failed probe.
    static void AddMissingFileMessage(QString &report, const QString &fileName, const QString &path);

    const SkinContext &context() const { return mContext; }
    InfoSink &info() const { return mInfo; }

private:
    QString uiFolder() const;
    // Probes the candidates in order; see LocateSkinFile.
    // `stamp` receives what the probe that found the file saw of it.
    QString probe(const QStringList &candidates, const QString &fileName, bool *found = nullptr,
                  FileStamp *stamp = nullptr) const;
    QString locate(const QString &reference, bool shared, bool &found, FileStamp &stamp) const;

    const SkinContext &mContext;
    InfoSink &mInfo;
};
