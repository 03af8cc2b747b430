// SPDX-License-Identifier: MIT
#pragma once

#include "SkinCodec.h"

#include <QString>
#include <QStringList>

class QCommandLineParser;
class QImage;
class clsKorviInterface;

// Output helpers and the argument forms shared by the subcommands.
namespace CommandLine {

// Writes to stdout; a failed write is remembered for outputFailure().
void printOut(const QByteArray &bytes);
// Flushes stdout; the system's reason when any write to it failed, else empty.
QString outputFailure();
// Text for a person to read, on stdout (a failed write is remembered for
// outputFailure()) and, as one line, on stderr: in the terminal's encoding, or
// as its characters on a Windows console (StandardStreams).
void printText(const QString &text);
void printErr(const QString &text);
// Prints a usage error and returns the usage exit code (2).
int usageError(const QString &text);

// Reads a subcommand's arguments (those after its name) with `parser`, which
// knows the subcommand's options. Returns 0 when they read and there are from
// `least` to `most` positional arguments; otherwise prints what is wrong and
// `usage`, and returns the usage exit code (2).
int parseArguments(QCommandLineParser &parser, const QStringList &args, const QString &usage, int least,
                   int most);

// Writes `bytes` as the whole new content of `path` (AtomicFileWriter); prints
// "korvi: cannot write PATH: reason" and returns false on failure.
bool writeFile(const QString &path, const QByteArray &bytes);
// Writes `picture` as a PNG file at `path`, as writeFile does; a picture that
// cannot be encoded prints "korvi: cannot encode WHAT as PNG; no file
// written" and returns false.
bool writePng(const QString &path, const QImage &picture, const QString &what);
// Whether `output` names the same file as `input` (which then must not be
// written over); prints the usage error when it does.
bool refuseSameFile(const QString &input, const QString &output, int &exitCode);

// The option "-i FILE", which may be repeated: files of the skin read as its
// shared (imported) files.
void addImportedOption(QCommandLineParser &parser);
QStringList importedFiles(const QCommandLineParser &parser);

// The option "--code-page NAME": the code page the skin's text is in.
void addCodePageOption(QCommandLineParser &parser);
// The code page the option names, else the host's default; nothing after
// printing why, when the name is no code page (a usage error).
std::optional<SkinCodec> codePage(const QCommandLineParser &parser);
// The usage line's form of the option.
inline QString codePageUsage() { return QStringLiteral("[--code-page NAME]"); }

// Reads the imported files (flag set) in order, then `file` (flag clear), into the
// document. On a reading error prints nothing and rethrows SkinReadError.
void readSkinFiles(clsKorviInterface &document, const QStringList &imported, const QString &file);

} // namespace CommandLine
