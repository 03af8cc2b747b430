// SPDX-License-Identifier: MIT
#pragma once

#include <QFrame>

class QLabel;
class QPushButton;

// The bar above the canvas that tells of skin files changed or deleted on
// disk while the skin has unsaved changes, and offers to read the skin again
// (losing them) or to keep working on what the editor has.
class ReloadBar : public QFrame
{
    Q_OBJECT

public:
    explicit ReloadBar(QWidget *parent = nullptr);

    void offer(const QString &text);
    QString text() const;

signals:
    void reloadChosen();
    void keepChosen();

private:
    QLabel *mText;
    QPushButton *mReload;
    QPushButton *mKeep;
};
