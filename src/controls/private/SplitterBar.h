// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class Splitter;

// The drag area between the two sides of a Splitter.
class SplitterBar : public QWidget
{
    Q_OBJECT

public:
    explicit SplitterBar(Splitter *splitter);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    Splitter *mSplitter;
};
