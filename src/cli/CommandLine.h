#pragma once

#include <QString>
#include <QStringList>

class clsKorviInterface;

// Output helpers and the argument forms shared by the subcommands.
namespace CommandLine {

void printOut(const QByteArray &bytes);
void printErr(const QString &text);
// Prints a usage error and returns the usage exit code (2).
int usageError(const QString &text);

// Splits "-i FILE" pairs off the arguments; what is left stays in `args`.
// Returns false (after printing a usage error) when a "-i" has no file.
bool takeImportedFiles(QStringList &args, QStringList &imported);

// Reads the imported files (flag set) in order, then `file` (flag clear), into the
// document. On a reading error prints nothing and rethrows SkinReadError.
void readSkinFiles(clsKorviInterface &document, const QStringList &imported, const QString &file);

} // namespace CommandLine
