// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QWidget;

// What every cell editor of the grid answers alike, watched in one place so
// that the editors cannot drift apart: Enter (either key) asks to commit,
// Escape to cancel, and the focus leaving a shown editor commits. The focus
// moving into a combo's open list is not leaving it.
class GridEditorKeys : public QObject
{
    Q_OBJECT

public:
    explicit GridEditorKeys(QObject *parent = nullptr);

    void watch(QWidget &editor);

signals:
    void enterPressed();
    void escapePressed();
    void focusLost();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};
