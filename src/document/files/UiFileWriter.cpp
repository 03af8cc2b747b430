// SPDX-License-Identifier: MIT
#include "UiFileWriter.h"

#include "AtomicFileWriter.h"
#include "clsKorviInterface.h"

#include <QFile>

namespace {

const QByteArray kLineEnd = QByteArrayLiteral("\r\n");
const QByteArray kNoValue = QByteArrayLiteral("<NOV>");

void appendTabs(QByteArray &out, int depth)
{
    out.append(qsizetype(depth), '\t');
}

void appendClosingTag(QByteArray &out, const clsElement &element, int depth)
{
    appendTabs(out, depth);
    out += "</" + element.ElementType() + '>' + kLineEnd;
}

// Every property of a script, attributes of its opening tag included, is one
// script line. The script's children are not written.
void appendScriptBody(QByteArray &out, const clsElement &element, int depth)
{
    out += '>' + kLineEnd;
    const clsProperties &props = element.Properties();
    for (int i = 0; i < props.Count(); ++i) {
        appendTabs(out, depth + 1);
        out += props.valueAt(i);
        out += kLineEnd;
    }
    appendClosingTag(out, element, depth);
}

// Repeated keys are written under their plain name; a bare flag is written as
// its key alone, in upper case.
void appendAttributes(QByteArray &out, const clsElement &element)
{
    const clsProperties &props = element.Properties();
    for (int i = 0; i < props.Count(); ++i) {
        out += ' ';
        const QByteArrayView key = clsProperty::idKeyView(props.keyAt(i));
        const QByteArrayView value = props.valueAt(i);
        if (value == kNoValue) {
            out += clsElement::upperAscii(key.toByteArray());
        } else {
            out += key;
            out += '=';
            out += value;
        }
    }
}

void appendElement(QByteArray &out, const clsElement &element, int depth)
{
    appendTabs(out, depth);
    // The blank after the type is always written: a header variable with no name
    // becomes "<VAR " followed by its attributes, two blanks before the first.
    out += '<' + element.ElementType() + ' ' + element.strName();
    if (element.ElementType() == "SCRIPT") {
        appendScriptBody(out, element, depth);
    } else if (element.ElementType() == "USELAYER") {
        // A used layer is only a reference: its properties and children are not
        // written.
        out += "/>";
    } else {
        appendAttributes(out, element);
        out += '>';
        // An element without children gets no closing tag.
        if (element.subElementCount() > 0) {
            out += kLineEnd;
            out += WriteElements(element.SubElements(), depth + 1);
            out += kLineEnd;
            appendClosingTag(out, element, depth);
        }
    }
}

// A section's text is cut into lines at every CR LF, each written with its own
// CR LF; as the closing tags already end in CR LF, each is followed by exactly one
// empty line.
void appendSection(QByteArray &out, const QByteArray &text)
{
    if (text.isEmpty())
        return;
    out += text;
    out += kLineEnd;
}

} // namespace

QByteArray WriteElements(const clsElements &elements, int depth)
{
    QByteArray out;
    for (const clsElement *element : elements) {
        if (element->IsImported)
            continue;
        if (!out.isEmpty())
            out += kLineEnd;
        appendElement(out, *element, depth);
    }
    return out;
}

UiFileWriter::UiFileWriter(const clsKorviInterface &document)
    : mDocument(document)
{
}

QByteArray UiFileWriter::fileText() const
{
    QByteArray out;
    if (mDocument.Headers().Count() > 0) {
        out += "<header>" + kLineEnd;
        appendSection(out, WriteElements(mDocument.Headers(), 1));
        out += "</header>" + kLineEnd + kLineEnd;
    }
    appendSection(out, WriteElements(mDocument.Templates(), 0));
    appendSection(out, WriteElements(mDocument.Fonts(), 0));
    appendSection(out, WriteElements(mDocument.Layers(), 0));
    return out;
}

QString UiFileWriter::backupPathFor(const QString &path)
{
    const qsizetype dot = path.lastIndexOf(QLatin1Char('.'));
    if (dot < 0)
        return QString();
    return path.left(dot + 1) + QStringLiteral("bak");
}

bool UiFileWriter::makeBackup(const QString &path, QString &error)
{
    if (!QFile::exists(path))
        return true;
    const QString backup = backupPathFor(path);
    // A file that is its own backup name ("x.bak") is not deleted to make room
    // for its copy: that would lose it.
    if (backup.isEmpty() || backup == path)
        return true;
    if (QFile::exists(backup)) {
        QFile old(backup);
        if (!old.remove()) {
            error = old.errorString();
            return false;
        }
    }
    QFile current(path);
    if (!current.copy(backup)) {
        error = current.errorString();
        return false;
    }
    return true;
}

bool UiFileWriter::writeData(AtomicFileWriter &file, const QByteArray &bytes)
{
    return file.write(bytes);
}

bool UiFileWriter::write(const QString &path, const Reporter &report)
{
    QString error;
    auto failed = [&](const QString &description) {
        if (report)
            report(QStringLiteral("Error saving file: ") + description);
        return false;
    };
    if (!makeBackup(path, error))
        return failed(error);
    AtomicFileWriter file(path);
    if (!file.open())
        return failed(file.errorString());
    if (!writeData(file, fileText()) || !file.commit()) {
        const QString description = file.errorString();
        file.cancel();
        return failed(description.isEmpty() ? QStringLiteral("%1: the write failed").arg(path) : description);
    }
    return true;
}

bool WriteUiFile(const clsKorviInterface &document, const QString &path,
                 const UiFileWriter::Reporter &report)
{
    return UiFileWriter(document).write(path, report);
}
