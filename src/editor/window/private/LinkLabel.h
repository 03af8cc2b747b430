// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

// A label that reads like a web link and reports a click.
class LinkLabel : public QLabel
{
    Q_OBJECT

public:
    explicit LinkLabel(const QString &text, QWidget *parent = nullptr);

signals:
    void clicked();

protected:
    void mouseReleaseEvent(QMouseEvent *event) override;
};
