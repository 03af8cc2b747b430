// SPDX-License-Identifier: MIT
#pragma once

#include "Dialogs.h"

#include <QList>
#include <QQueue>

#include <functional>

// Dialogs for tests: every question is recorded, and answered from queues filled
// beforehand. An empty queue answers as a user who cancels (empty text, Cancel or
// the last button, no colour, no printing).
class ScriptedDialogs : public Dialogs
{
public:
    // One question the program asked.
    struct Asked
    {
        QString kind;   // "text", "message", "open", "save", "folder", "choice", "color", "print", "form"
        QString title;
        QString text;   // prompt or message text
        QString value;  // default text, initial directory or folder, initial colour name
        QString filter; // file filter as given
        QStringList choices; // what a choice offered
        Icon icon = Icon::None;
        Buttons buttons = Buttons::Ok;
        int Min = 0, Max = 0, FromPage = 0, ToPage = 0; // print dialog
    };

    // The answer to a print dialog; applied to the request's printer when accepted.
    struct PrintAnswer
    {
        bool accepted = true;
        int FromPage = 1;
        int ToPage = 1;
        QString printerName; // empty: keep the printer's device
        QPageLayout::Orientation orientation = QPageLayout::Portrait;
        QPrinter::DuplexMode duplex = QPrinter::DuplexNone;
    };

    // Each question answers from its own queue, filled beforehand; the
    // arguments' defaults are the interface's, as callers ask through it.
    void answerText(const QString &text) { mTexts.enqueue(text); }
    QString askText(const QString &title, const QString &prompt, const QString &defaultText) override;
    // Answered from the texts as askText; records the suggestions as choices.
    QString askTextFrom(const QString &title, const QString &prompt, const QStringList &suggestions,
                        const QString &defaultText) override;

    void answerButton(Button button) { mButtons.enqueue(button); }
    Button message(const QString &title, const QString &text, Icon icon, Buttons buttons) override;

    // For the open, save and folder dialogs alike.
    void answerPath(const QString &path) { mPaths.enqueue(path); }
    QString openFileName(const QString &title, const QString &directory, const QString &filter) override;
    QString saveFileName(const QString &title, const QString &directory, const QString &filter) override;
    QString folder(const QString &title, const QString &start) override;

    // The entry a list choice picks (empty: cancel).
    void answerChoice(const QString &choice) { mChoices.enqueue(choice); }
    QString choose(const QString &title, const QString &prompt, const QStringList &choices) override;

    void answerColor(std::optional<QColor> color) { mColors.enqueue(color); }
    std::optional<QColor> color(const QColor &initial) override;

    void answerPrint(const PrintAnswer &answer) { mPrints.enqueue(answer); }
    bool print(PrintRequest &request) override;

    // What the user does in a form: fills it in, then accepts or rejects it. A
    // form with no answer left is rejected, as a user who cancels. Recorded with
    // the form's object name as the title.
    using FormAnswer = std::function<void(QDialog &form)>;
    void answerForm(const FormAnswer &answer) { mForms.enqueue(answer); }
    void showForm(QDialog &form) override;

    const QList<Asked> &asked() const { return mAsked; }
    // Answers queued but not used yet.
    int unanswered() const;

private:
    // Records a question of this kind; the caller fills in the rest.
    Asked &record(const QString &kind, const QString &title);
    QString askPath(const QString &kind, const QString &title, const QString &directory,
                    const QString &filter);

    QQueue<QString> mTexts;
    QQueue<Button> mButtons;
    QQueue<QString> mPaths;
    QQueue<QString> mChoices;
    QQueue<std::optional<QColor>> mColors;
    QQueue<PrintAnswer> mPrints;
    QQueue<FormAnswer> mForms;
    QList<Asked> mAsked;
};
