// SPDX-License-Identifier: MIT
#include "GridCellPainter.h"

#include "GridNumber.h"
#include "OleColor.h"
#include "PowGrid.h"
#include "Twips.h"

namespace {

Qt::Alignment textAlignment(int alignment)
{
    switch (alignment) {
    case alignRight: return Qt::AlignRight | Qt::AlignVCenter;
    case alignCenter: return Qt::AlignHCenter | Qt::AlignVCenter;
    default: return Qt::AlignLeft | Qt::AlignVCenter;
    }
}

} // namespace

GridCellPainter::GridCellPainter(const PowGrid &grid, QPainter &painter, const QPaintDevice *device)
    : mGrid(grid)
    , mPainter(painter)
    , mDevice(device)
    , mPadding(Twips::toPixelsX(PaddingTwips, device))
{
}

QColor GridCellPainter::color(quint32 value) const
{
    return OleColor::toColor(value, mGrid.palette());
}

void GridCellPainter::paintBackground(const QRect &whole, const QRect &inner, const QRect &client)
{
    if (whole != inner) {
        mPainter.setPen(color(mGrid.ColorDarkShadow()));
        mPainter.drawRect(whole.adjusted(0, 0, -1, -1));
    }
    mPainter.fillRect(inner, mGrid.palette().button());
    mPainter.fillRect(client, color(mGrid.ColorUnused()));
}

void GridCellPainter::paintHeader(const QRect &cell, const Header &header)
{
    mPainter.fillRect(cell, color(mGrid.HeadlineColor()));
    mPainter.setPen(color(mGrid.ColorLightShadow()));
    mPainter.drawLine(cell.topLeft(), cell.topRight());
    mPainter.drawLine(cell.topLeft(), cell.bottomLeft());
    mPainter.setPen(color(mGrid.ShadowColor()));
    mPainter.drawLine(cell.topRight(), cell.bottomRight());
    mPainter.setPen(color(mGrid.ColorHeadlineShadow()));
    mPainter.drawLine(cell.bottomLeft(), cell.bottomRight());
    QRect area = cell;
    paintIcon(area, mGrid.ImageListHeader(), header.Icon);
    mPainter.setFont(mGrid.HeaderFont());
    paintText(area, header.Caption, header.Alignment, color(mGrid.ColorHeadlineText()));
}

void GridCellPainter::paintTitle(const QRect &line, const PowGridItem &item, bool open,
                                 const QRect &box)
{
    mPainter.fillRect(line, color(mGrid.ColorTitleBackground()));
    const QColor text = color(mGrid.ColorTitleText());
    int textLeft = line.left();
    if (!box.isEmpty()) {
        // The collapse box shows "-" while the rows are shown, the expand box "+".
        mPainter.setPen(text);
        mPainter.fillRect(box, Qt::white);
        mPainter.drawRect(box.adjusted(0, 0, -1, -1));
        const QPoint c = box.center();
        const int arm = box.width() / 2 - 2;
        mPainter.drawLine(c.x() - arm, c.y(), c.x() + arm, c.y());
        if (!open)
            mPainter.drawLine(c.x(), c.y() - arm, c.x(), c.y() + arm);
        textLeft = box.right() + 1;
    }
    mPainter.setFont(mGrid.TitleFont());
    paintText(QRect(textLeft, line.top(), line.right() - textLeft, line.height()),
              item.CellText(0), alignLeft, text);
    mPainter.setPen(color(mGrid.ColorGrid()));
    mPainter.drawLine(line.bottomLeft(), line.bottomRight());
}

QColor GridCellPainter::background(const CellState &state) const
{
    if (state.selected)
        return color(mGrid.ColorSelectedRow());
    if (state.editable)
        return color(mGrid.ColorEditable());
    return color(state.alternate ? mGrid.ColorUneditableAlternate() : mGrid.ColorUneditable());
}

void GridCellPainter::paintCell(const QRect &cell, const PowGridItem &item, int column,
                                const CellState &state)
{
    mPainter.fillRect(cell, background(state));
    QColor pen = color(state.selected ? mGrid.ColorSelectedText() : mGrid.TextColor());
    if (item.Dimmed && !state.selected)
        pen = QColor(Qt::gray);
    const Header *header = mGrid.Headers()->at(column);
    const int alignment = header ? header->Alignment : alignLeft;
    QRect area = cell;
    if (column == 0)
        paintIcon(area, mGrid.ImageList(), item.Icon);
    QFont font = mGrid.Font();
    font.setItalic(font.italic() || item.Dimmed);
    mPainter.setFont(font);
    const QString text = mGrid.DisplayText(&item, column);
    switch (mGrid.CellDataType(&item, column)) {
    case dtCheck:
        paintCheck(area, PowGrid::isChecked(item.CellText(column)),
                   header ? header->CheckStyle : checkTick, pen);
        break;
    case dtButton:
        if (mGrid.isButtonShown(&item, column))
            paintButton(area, text, state.pressed);
        break;
    case dtProgress:
        paintProgress(area, item.CellText(column), text);
        break;
    default:
        paintText(area, text, alignment, pen);
        break;
    }
    paintGridLines(cell);
}

void GridCellPainter::paintGridLines(const QRect &cell)
{
    if (mGrid.CellLines() == 0)
        return;
    mPainter.setPen(color(mGrid.ColorGrid()));
    mPainter.drawLine(cell.topRight(), cell.bottomRight());
    mPainter.drawLine(cell.bottomLeft(), cell.bottomRight());
}

void GridCellPainter::paintText(const QRect &cell, const QString &text, int alignment,
                                const QColor &pen)
{
    mPainter.setPen(pen);
    mPainter.drawText(cell.adjusted(mPadding, 0, -mPadding, 0), int(textAlignment(alignment)), text);
}

void GridCellPainter::paintCheck(const QRect &cell, bool checked, int style, const QColor &pen)
{
    const int size = std::min(cell.height() - 4, Twips::toPixelsY(195, mDevice));
    const QRect box(cell.left() + mPadding, cell.top() + (cell.height() - size) / 2, size, size);
    mPainter.fillRect(box, Qt::white);
    mPainter.setPen(pen);
    mPainter.drawRect(box.adjusted(0, 0, -1, -1));
    if (!checked)
        return;
    const QRect in = box.adjusted(2, 2, -3, -3);
    if (style == checkCross) {
        mPainter.drawLine(in.topLeft(), in.bottomRight());
        mPainter.drawLine(in.bottomLeft(), in.topRight());
    } else {
        mPainter.drawLine(in.left(), in.center().y(), in.center().x(), in.bottom());
        mPainter.drawLine(in.center().x(), in.bottom(), in.right(), in.top());
    }
}

void GridCellPainter::paintButton(const QRect &cell, const QString &text, bool pressed)
{
    const QRect face = cell.adjusted(1, 1, -2, -2);
    const int round = mGrid.ButtonRoundSize();
    mPainter.save();
    mPainter.setRenderHint(QPainter::Antialiasing);
    mPainter.setPen(color(mGrid.ButtonBorderColor()));
    mPainter.setBrush(color(pressed ? mGrid.ButtonClickColor() : mGrid.ButtonColor()));
    mPainter.drawRoundedRect(face, round / 2.0, round / 2.0);
    mPainter.restore();
    mPainter.setFont(mGrid.ButtonFont());
    paintText(face, text, alignCenter, color(mGrid.TextColor()));
}

void GridCellPainter::paintProgress(const QRect &cell, const QString &value, const QString &label)
{
    const QRect bar = cell.adjusted(2, 2, -3, -3);
    const double percent = std::clamp(GridNumber::parse(value).value_or(0), 0.0, 100.0);
    mPainter.fillRect(bar, color(mGrid.ColorEmptyProgressBar()));
    QRect filled = bar;
    filled.setWidth(int(bar.width() * percent / 100.0));
    mPainter.fillRect(filled, color(mGrid.ColorProgressBar()));
    paintText(bar, label, alignCenter, color(mGrid.TextColor()));
}

// Draws the 1-based image `icon` at the left of the cell and leaves the rest
// of the cell in `cell`.
void GridCellPainter::paintIcon(QRect &cell, const QList<QPixmap> &images, int icon)
{
    if (icon < 1 || icon > images.size())
        return;
    const QPixmap &image = images[icon - 1];
    const int size = std::min(cell.height() - 2, image.height());
    const QRect place(cell.left() + mPadding, cell.top() + (cell.height() - size) / 2, size, size);
    mPainter.drawPixmap(place, image);
    cell.setLeft(place.right() + 1);
}
