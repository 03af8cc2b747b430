// SPDX-License-Identifier: MIT
#pragma once

#include "Dialogs.h"

#include <QPointer>
#include <QWidget>

// The real dialogs of the toolkit, each modal over `parent`.
class QtDialogs : public Dialogs
{
public:
    explicit QtDialogs(QWidget *parent = nullptr) : mParent(parent) { }

    // The defaults of the arguments are the interface's: callers ask through it.
    QString askText(const QString &title, const QString &prompt, const QString &defaultText) override;
    QString askTextFrom(const QString &title, const QString &prompt, const QStringList &suggestions,
                        const QString &defaultText) override;
    Button message(const QString &title, const QString &text, Icon icon, Buttons buttons) override;
    QString openFileName(const QString &title, const QString &directory,
                         const QString &filter) override;
    QString saveFileName(const QString &title, const QString &directory,
                         const QString &filter) override;
    QString folder(const QString &title, const QString &start) override;
    QString choose(const QString &title, const QString &prompt, const QStringList &choices) override;
    std::optional<QColor> color(const QColor &initial) override;
    bool print(PrintRequest &request) override;
    void showForm(QDialog &form) override;

private:
    QPointer<QWidget> mParent;
};
