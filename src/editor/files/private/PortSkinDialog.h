// SPDX-License-Identifier: MIT
#pragma once

#include "SkinPort.h"

#include <QDialog>
#include <QImage>

class QComboBox;
class QLabel;
class QLineEdit;

// File > Port Skin...: the source and target formats (a common screen, or any
// W_H typed), the aspect and font choices, and a preview of the current layer
// on the target screen before anything is written.
class PortSkinDialog : public QDialog
{
    Q_OBJECT

public:
    PortSkinDialog(const QString &fromFormat, const QImage &currentLayer, QWidget *parent = nullptr);

    // The screens offered as targets.
    static QStringList commonFormats();

    QString fromFormat() const;
    QString toFormat() const;
    // The choices as port options for the skin folder (no dry run).
    SkinPort::Options options(const QString &skinDir) const;
    // The current layer drawn on the target screen as the port places it:
    // stretched by both factors, or by one and centred.
    QImage preview() const;

    QLineEdit *txtFrom = nullptr;
    QComboBox *cmbTo = nullptr;
    QComboBox *cmbAspect = nullptr;
    QComboBox *cmbFonts = nullptr;
    QLabel *lblPreview = nullptr;
    QLabel *lblProblem = nullptr;

private:
    void updatePreview();

    QImage mCurrent;
};
