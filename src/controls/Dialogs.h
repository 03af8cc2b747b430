// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPageLayout>
#include <QPrinter>
#include <QString>
#include <QStringList>

#include <optional>

class QDialog;

// Every modal dialog of the program is asked through this one interface, so that
// the program can run with real dialogs (QtDialogs) or with scripted answers in
// tests (ScriptedDialogs).
//
// Conventions shared by all implementations:
// - A text, file or folder answer that is empty means the user cancelled.
// - File filters are written as pairs separated by "|": a description and its
//   patterns, as in "User Interface File Korvi8|*.ui" or
//   "Pictures|*.bmp;*.jpg|All files|*.*".
class Dialogs
{
public:
    enum class Icon { None, Information, Question, Warning, Critical };
    enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel, RetryCancel, AbortRetryIgnore, OverwriteCancel };
    // The values are those of the classic message box answers.
    enum class Button { Ok = 1, Cancel = 2, Abort = 3, Retry = 4, Ignore = 5, Yes = 6, No = 7, Overwrite = 8 };

    // What the print dialog is asked with, and what it gives back. The dialog
    // works on `printer` itself: on confirmation the printer carries the chosen
    // device, orientation, duplex, copies and page size.
    struct PrintRequest
    {
        QPrinter *printer = nullptr;
        int Min = 1;      // the page range the user may choose from
        int Max = 1;
        int FromPage = 1; // in: the preset range; out: the chosen one
        int ToPage = 1;
    };

    virtual ~Dialogs();

    // A modal one-line prompt. Returns the typed text; empty means cancel.
    virtual QString askText(const QString &title, const QString &prompt,
                            const QString &defaultText = QString()) = 0;
    // The same prompt with an editable drop-down of suggestions; the typed
    // text or the chosen suggestion. Empty means cancel.
    virtual QString askTextFrom(const QString &title, const QString &prompt, const QStringList &suggestions,
                                const QString &defaultText = QString());
    // A message box; returns the button the user pressed (closing the box counts
    // as Cancel when there is one, else as the only or last button).
    virtual Button message(const QString &title, const QString &text,
                           Icon icon = Icon::Information, Buttons buttons = Buttons::Ok) = 0;
    // The path of an existing file to open; empty when cancelled.
    virtual QString openFileName(const QString &title, const QString &directory,
                                 const QString &filter) = 0;
    // The path to save to; empty when cancelled.
    virtual QString saveFileName(const QString &title, const QString &directory,
                                 const QString &filter) = 0;
    // A folder; empty when cancelled.
    virtual QString folder(const QString &title, const QString &start) = 0;
    // One of `choices`, picked from a list; empty when cancelled.
    virtual QString choose(const QString &title, const QString &prompt, const QStringList &choices) = 0;
    // A colour; nothing when cancelled.
    virtual std::optional<QColor> color(const QColor &initial) = 0;
    // The print dialog; true when the user confirmed.
    virtual bool print(PrintRequest &request) = 0;
    // One of the program's own forms (settings, about, port), shown modally;
    // the form's result() tells how it was left.
    virtual void showForm(QDialog &form) = 0;

    // "A|*.a|B|*.b" as the file dialogs of the toolkit write it: "A (*.a);;B (*.b)".
    static QString toolkitFilter(const QString &filter);
};
