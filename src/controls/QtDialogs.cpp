// SPDX-License-Identifier: MIT
#include "QtDialogs.h"

#include <QColorDialog>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPushButton>

namespace {

QMessageBox::Icon toolkitIcon(Dialogs::Icon icon)
{
    switch (icon) {
    case Dialogs::Icon::Information: return QMessageBox::Information;
    case Dialogs::Icon::Question: return QMessageBox::Question;
    case Dialogs::Icon::Warning: return QMessageBox::Warning;
    case Dialogs::Icon::Critical: return QMessageBox::Critical;
    case Dialogs::Icon::None: break;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons toolkitButtons(Dialogs::Buttons buttons)
{
    switch (buttons) {
    case Dialogs::Buttons::Ok: return QMessageBox::Ok;
    case Dialogs::Buttons::OkCancel: return QMessageBox::Ok | QMessageBox::Cancel;
    case Dialogs::Buttons::YesNo: return QMessageBox::Yes | QMessageBox::No;
    case Dialogs::Buttons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case Dialogs::Buttons::RetryCancel: return QMessageBox::Retry | QMessageBox::Cancel;
    case Dialogs::Buttons::AbortRetryIgnore:
        return QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore;
    case Dialogs::Buttons::OverwriteCancel: return QMessageBox::Cancel;
    }
    return QMessageBox::Ok;
}

Dialogs::Button ourButton(int pressed)
{
    switch (pressed) {
    case QMessageBox::Ok: return Dialogs::Button::Ok;
    case QMessageBox::Yes: return Dialogs::Button::Yes;
    case QMessageBox::No: return Dialogs::Button::No;
    case QMessageBox::Retry: return Dialogs::Button::Retry;
    case QMessageBox::Abort: return Dialogs::Button::Abort;
    case QMessageBox::Ignore: return Dialogs::Button::Ignore;
    default: return Dialogs::Button::Cancel;
    }
}

} // namespace

QString QtDialogs::askTextFrom(const QString &title, const QString &prompt, const QStringList &suggestions,
                               const QString &defaultText)
{
    QStringList items = suggestions;
    int current = int(items.indexOf(defaultText));
    if (current < 0 && !defaultText.isEmpty()) {
        items.prepend(defaultText);
        current = 0;
    }
    bool ok = false;
    const QString text = QInputDialog::getItem(mParent, title, prompt, items, qMax(current, 0), true, &ok);
    return ok ? text : QString();
}

QString QtDialogs::askText(const QString &title, const QString &prompt, const QString &defaultText)
{
    bool ok = false;
    const QString text = QInputDialog::getText(mParent, title, prompt, QLineEdit::Normal,
                                               defaultText, &ok);
    return ok ? text : QString();
}

Dialogs::Button QtDialogs::message(const QString &title, const QString &text, Icon icon,
                                   Buttons buttons)
{
    QMessageBox box(toolkitIcon(icon), title, text, toolkitButtons(buttons), mParent);
    if (buttons == Buttons::OverwriteCancel) {
        QAbstractButton *overwrite = box.addButton(QStringLiteral("Overwrite"), QMessageBox::AcceptRole);
        box.setDefaultButton(QMessageBox::Cancel);
        box.exec();
        return box.clickedButton() == overwrite ? Button::Overwrite : Button::Cancel;
    }
    return ourButton(box.exec());
}

QString QtDialogs::openFileName(const QString &title, const QString &directory,
                                const QString &filter)
{
    return QFileDialog::getOpenFileName(mParent, title, directory, toolkitFilter(filter));
}

QString QtDialogs::saveFileName(const QString &title, const QString &directory,
                                const QString &filter)
{
    // The program asks its own overwrite question: the dialog asks none.
    return QFileDialog::getSaveFileName(mParent, title, directory, toolkitFilter(filter), nullptr,
                                        QFileDialog::DontConfirmOverwrite);
}

QString QtDialogs::folder(const QString &title, const QString &start)
{
    return QFileDialog::getExistingDirectory(mParent, title, start);
}

QString QtDialogs::choose(const QString &title, const QString &prompt, const QStringList &choices)
{
    bool ok = false;
    const QString chosen = QInputDialog::getItem(mParent, title, prompt, choices, 0, false, &ok);
    return ok ? chosen : QString();
}

std::optional<QColor> QtDialogs::color(const QColor &initial)
{
    const QColor chosen = QColorDialog::getColor(initial, mParent);
    if (!chosen.isValid())
        return std::nullopt;
    return chosen;
}

bool QtDialogs::print(PrintRequest &request)
{
    QPrintDialog dialog(request.printer, mParent);
    dialog.setOption(QAbstractPrintDialog::PrintPageRange, true);
    dialog.setMinMax(request.Min, request.Max);
    dialog.setFromTo(request.FromPage, request.ToPage);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    if (dialog.printRange() == QAbstractPrintDialog::PageRange) {
        request.FromPage = dialog.fromPage();
        request.ToPage = dialog.toPage();
    } else {
        // "All pages" (or a selection) means the whole allowed range.
        request.FromPage = request.Min;
        request.ToPage = request.Max;
    }
    return true;
}

void QtDialogs::showForm(QDialog &form)
{
    form.exec();
}
