// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <functional>

class AtomicFileWriter;
class clsElements;
class clsKorviInterface;

// The text of elements and, recursively, of their children, in the skin file
// grammar: `depth` leading tabs, lines joined by CR LF, no line end after the last
// line. Imported entries are left out.
QByteArray WriteElements(const clsElements &elements, int depth);

// Saves a document as a skin file, keeping one backup of the file it replaces.
class UiFileWriter
{
public:
    using Reporter = std::function<void(const QString &message)>;

    explicit UiFileWriter(const clsKorviInterface &document);
    virtual ~UiFileWriter() = default;

    // Makes the backup, then writes the whole document to `path`. The new file
    // replaces the old one only once it is completely written, so a failure at any
    // moment leaves the old file as it was. On failure the reporter receives
    // "Error saving file: " and the system's description, and false is returned.
    bool write(const QString &path, const Reporter &report);

    // The whole file's bytes.
    QByteArray fileText() const;

    // "main.ui" -> "main.bak": the path up to its last "." plus "bak". The last
    // "." is searched in the whole path, folders included, so "skin.old/main"
    // gives "skin.bak". Empty when the path holds no ".".
    static QString backupPathFor(const QString &path);
    // Replaces the backup of `path` by a copy of the file, when it exists;
    // on failure `error` tells why.
    static bool makeBackup(const QString &path, QString &error);

protected:
    // Writes the bytes into the file being saved; returns false on failure.
    virtual bool writeData(AtomicFileWriter &file, const QByteArray &bytes);

private:
    const clsKorviInterface &mDocument;
};

// Saves `document` to `path` with UiFileWriter; see UiFileWriter::write.
bool WriteUiFile(const clsKorviInterface &document, const QString &path,
                 const UiFileWriter::Reporter &report);
