// SPDX-License-Identifier: MIT
#include "PortSkinDialog.h"

#include "PortNumbers.h"
#include "SkinFormatName.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int kPreviewWidth = 360;

} // namespace

PortSkinDialog::PortSkinDialog(const QString &fromFormat, const QImage &currentLayer, QWidget *parent)
    : QDialog(parent)
    , mCurrent(currentLayer)
{
    setWindowTitle(QStringLiteral("Port Skin"));
    txtFrom = new QLineEdit(fromFormat, this);
    cmbTo = new QComboBox(this);
    cmbTo->setEditable(true);
    cmbTo->addItems(commonFormats());
    cmbTo->setCurrentText(fromFormat == QLatin1String("1024_600") ? QStringLiteral("1280_720") : QStringLiteral("1024_600"));
    cmbAspect = new QComboBox(this);
    cmbAspect->addItem(QStringLiteral("Stretch to the new screen"), QStringLiteral("stretch"));
    cmbAspect->addItem(QStringLiteral("Fit with one factor, centred"), QStringLiteral("fit"));
    cmbFonts = new QComboBox(this);
    cmbFonts->addItem(QStringLiteral("Scale font sizes"), QStringLiteral("scale"));
    cmbFonts->addItem(QStringLiteral("Keep font sizes"), QStringLiteral("keep"));
    lblPreview = new QLabel(this);
    lblPreview->setMinimumSize(kPreviewWidth, kPreviewWidth * 9 / 16);
    lblProblem = new QLabel(this);

    auto *form = new QFormLayout;
    form->addRow(QStringLiteral("Source format:"), txtFrom);
    form->addRow(QStringLiteral("Target format (W_H):"), cmbTo);
    form->addRow(QStringLiteral("Aspect:"), cmbAspect);
    form->addRow(QStringLiteral("Fonts:"), cmbFonts);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setText(QStringLiteral("Port"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(lblPreview);
    layout->addWidget(lblProblem);
    layout->addWidget(buttons);

    connect(txtFrom, &QLineEdit::textChanged, this, &PortSkinDialog::updatePreview);
    connect(cmbTo, &QComboBox::currentTextChanged, this, &PortSkinDialog::updatePreview);
    connect(cmbAspect, &QComboBox::currentIndexChanged, this, &PortSkinDialog::updatePreview);
    updatePreview();
}

QStringList PortSkinDialog::commonFormats()
{
    return { QStringLiteral("480_272"), QStringLiteral("800_480"), QStringLiteral("1024_600"),
             QStringLiteral("1280_720"), QStringLiteral("1280_800"), QStringLiteral("1600_960"),
             QStringLiteral("1920_1080") };
}

QString PortSkinDialog::fromFormat() const
{
    return txtFrom->text().trimmed();
}

QString PortSkinDialog::toFormat() const
{
    return cmbTo->currentText().trimmed();
}

SkinPort::Options PortSkinDialog::options(const QString &skinDir) const
{
    SkinPort::Options options;
    options.skinDir = skinDir;
    options.from = fromFormat();
    options.to = toFormat();
    options.aspect = cmbAspect->currentData().toString() == QLatin1String("fit") ? SkinPort::Options::Aspect::Fit
                                                                                 : SkinPort::Options::Aspect::Stretch;
    options.fonts = cmbFonts->currentData().toString() == QLatin1String("keep") ? PortScale::Fonts::Keep
                                                                               : PortScale::Fonts::Scale;
    return options;
}

QImage PortSkinDialog::preview() const
{
    const QSize from = SkinFormatName::sizeOf(fromFormat());
    const QSize to = SkinFormatName::sizeOf(toFormat());
    if (mCurrent.isNull() || !from.isValid() || !to.isValid() || from.isEmpty() || to.isEmpty())
        return {};
    QImage screen(to, QImage::Format_RGB32);
    screen.fill(Qt::black);
    QPainter painter(&screen);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    // The layer as drawn covers the old screen: it goes where the old screen
    // goes on the new one.
    const QImage old = mCurrent.copy(QRect(QPoint(0, 0), from));
    if (cmbAspect->currentData().toString() == QLatin1String("fit")) {
        const double f = qMin(double(to.width()) / from.width(), double(to.height()) / from.height());
        const QSize size(int(PortNumbers::scaled(from.width(), f)), int(PortNumbers::scaled(from.height(), f)));
        painter.drawImage(QRect(QPoint((to.width() - size.width()) / 2, (to.height() - size.height()) / 2), size), old);
    } else {
        painter.drawImage(QRect(QPoint(0, 0), to), old);
    }
    return screen;
}

void PortSkinDialog::updatePreview()
{
    const bool formatsOk = SkinFormatName::isFormat(fromFormat()) && SkinFormatName::isFormat(toFormat())
                        && fromFormat() != toFormat();
    lblProblem->setText(formatsOk ? QString() : QStringLiteral("The formats are W_H, such as 800_480, and differ."));
    const QImage shown = preview();
    lblPreview->setPixmap(shown.isNull() ? QPixmap()
                                         : QPixmap::fromImage(shown.scaledToWidth(kPreviewWidth, Qt::SmoothTransformation)));
}
