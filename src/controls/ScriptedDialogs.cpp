// SPDX-License-Identifier: MIT
#include "ScriptedDialogs.h"

#include <QDialog>

namespace {

Dialogs::Button cancelAnswer(Dialogs::Buttons buttons)
{
    switch (buttons) {
    case Dialogs::Buttons::Ok: return Dialogs::Button::Ok;
    case Dialogs::Buttons::YesNo: return Dialogs::Button::No;
    case Dialogs::Buttons::AbortRetryIgnore: return Dialogs::Button::Ignore;
    default: return Dialogs::Button::Cancel;
    }
}

// The next queued answer; `cancel` when none is left, as a user who cancels.
template<class T>
T nextOr(QQueue<T> &queue, T cancel)
{
    return queue.isEmpty() ? cancel : queue.dequeue();
}

} // namespace

int ScriptedDialogs::unanswered() const
{
    return int(mTexts.size() + mButtons.size() + mPaths.size() + mChoices.size() + mColors.size() + mPrints.size()
               + mForms.size());
}

ScriptedDialogs::Asked &ScriptedDialogs::record(const QString &kind, const QString &title)
{
    mAsked.append(Asked());
    Asked &asked = mAsked.last();
    asked.kind = kind;
    asked.title = title;
    return asked;
}

QString ScriptedDialogs::askText(const QString &title, const QString &prompt,
                                 const QString &defaultText)
{
    Asked &a = record(QStringLiteral("text"), title);
    a.text = prompt;
    a.value = defaultText;
    return nextOr(mTexts, QString());
}

QString ScriptedDialogs::askTextFrom(const QString &title, const QString &prompt, const QStringList &suggestions,
                                     const QString &defaultText)
{
    Asked &a = record(QStringLiteral("text"), title);
    a.text = prompt;
    a.value = defaultText;
    a.choices = suggestions;
    return nextOr(mTexts, QString());
}

Dialogs::Button ScriptedDialogs::message(const QString &title, const QString &text, Icon icon,
                                         Buttons buttons)
{
    Asked &a = record(QStringLiteral("message"), title);
    a.text = text;
    a.icon = icon;
    a.buttons = buttons;
    return nextOr(mButtons, cancelAnswer(buttons));
}

QString ScriptedDialogs::openFileName(const QString &title, const QString &directory,
                                      const QString &filter)
{
    return askPath(QStringLiteral("open"), title, directory, filter);
}

QString ScriptedDialogs::saveFileName(const QString &title, const QString &directory,
                                      const QString &filter)
{
    return askPath(QStringLiteral("save"), title, directory, filter);
}

QString ScriptedDialogs::askPath(const QString &kind, const QString &title, const QString &directory,
                                 const QString &filter)
{
    Asked &a = record(kind, title);
    a.value = directory;
    a.filter = filter;
    return nextOr(mPaths, QString());
}

QString ScriptedDialogs::folder(const QString &title, const QString &start)
{
    record(QStringLiteral("folder"), title).value = start;
    return nextOr(mPaths, QString());
}

QString ScriptedDialogs::choose(const QString &title, const QString &prompt, const QStringList &choices)
{
    Asked &a = record(QStringLiteral("choice"), title);
    a.text = prompt;
    a.choices = choices;
    return nextOr(mChoices, QString());
}

std::optional<QColor> ScriptedDialogs::color(const QColor &initial)
{
    record(QStringLiteral("color"), QString()).value = initial.name();
    return nextOr(mColors, std::optional<QColor>());
}

bool ScriptedDialogs::print(PrintRequest &request)
{
    Asked &a = record(QStringLiteral("print"), QString());
    a.Min = request.Min;
    a.Max = request.Max;
    a.FromPage = request.FromPage;
    a.ToPage = request.ToPage;
    if (mPrints.isEmpty())
        return false;
    const PrintAnswer answer = mPrints.dequeue();
    if (!answer.accepted)
        return false;
    if (!answer.printerName.isEmpty())
        request.printer->setPrinterName(answer.printerName);
    request.printer->setPageOrientation(answer.orientation);
    request.printer->setDuplex(answer.duplex);
    request.FromPage = answer.FromPage;
    request.ToPage = answer.ToPage;
    return true;
}

void ScriptedDialogs::showForm(QDialog &form)
{
    record(QStringLiteral("form"), form.objectName());
    if (mForms.isEmpty())
        form.reject();
    else
        mForms.dequeue()(form);
}
