// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class Splitter;

// The small button on a Splitter's bar that collapses and restores a side.
class SplitterButton : public QWidget
{
    Q_OBJECT

public:
    explicit SplitterButton(Splitter *splitter);

protected:
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    Splitter *mSplitter;
};
