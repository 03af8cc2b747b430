// SPDX-License-Identifier: MIT
#include "ScriptedDialogs.h"

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

} // namespace

int ScriptedDialogs::unanswered() const
{
    return int(mTexts.size() + mButtons.size() + mPaths.size() + mChoices.size() + mColors.size() + mPrints.size());
}

QString ScriptedDialogs::askText(const QString &title, const QString &prompt,
                                 const QString &defaultText)
{
    Asked a;
    a.kind = QStringLiteral("text");
    a.title = title;
    a.text = prompt;
    a.value = defaultText;
    mAsked << a;
    return mTexts.isEmpty() ? QString() : mTexts.dequeue();
}

Dialogs::Button ScriptedDialogs::message(const QString &title, const QString &text, Icon icon,
                                         Buttons buttons)
{
    Asked a;
    a.kind = QStringLiteral("message");
    a.title = title;
    a.text = text;
    a.icon = icon;
    a.buttons = buttons;
    mAsked << a;
    return mButtons.isEmpty() ? cancelAnswer(buttons) : mButtons.dequeue();
}

QString ScriptedDialogs::nextPath()
{
    return mPaths.isEmpty() ? QString() : mPaths.dequeue();
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
    Asked a;
    a.kind = kind;
    a.title = title;
    a.value = directory;
    a.filter = filter;
    mAsked << a;
    return nextPath();
}

QString ScriptedDialogs::folder(const QString &title, const QString &start)
{
    Asked a;
    a.kind = QStringLiteral("folder");
    a.title = title;
    a.value = start;
    mAsked << a;
    return nextPath();
}

QString ScriptedDialogs::choose(const QString &title, const QString &prompt, const QStringList &choices)
{
    Asked a;
    a.kind = QStringLiteral("choice");
    a.title = title;
    a.text = prompt;
    a.choices = choices;
    mAsked << a;
    return mChoices.isEmpty() ? QString() : mChoices.dequeue();
}

std::optional<QColor> ScriptedDialogs::color(const QColor &initial)
{
    Asked a;
    a.kind = QStringLiteral("color");
    a.value = initial.name();
    mAsked << a;
    return mColors.isEmpty() ? std::nullopt : mColors.dequeue();
}

bool ScriptedDialogs::print(PrintRequest &request)
{
    Asked a;
    a.kind = QStringLiteral("print");
    a.Min = request.Min;
    a.Max = request.Max;
    a.FromPage = request.FromPage;
    a.ToPage = request.ToPage;
    mAsked << a;
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
