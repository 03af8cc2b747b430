// SPDX-License-Identifier: MIT
#include "PowGrid.h"

#include "GridCellPainter.h"
#include "GridComboEditor.h"
#include "GridDateEditor.h"
#include "GridEditorKeys.h"
#include "GridNumber.h"
#include "GridPrinter.h"
#include "GridTextEditor.h"
#include "OleColor.h"
#include "PropertyBag.h"
#include "Twips.h"
#include "clsComboList.h"

#include <QApplication>
#include <QDateTime>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QSpinBox>
#include <QStyle>
#include <QStyleOptionFocusRect>
#include <QToolTip>

#include <climits>
#include <cmath>

namespace {

// Dates and times are stored as ISO texts; a cell also shows texts written
// the day/month/year way.
const char *const StoredDate = "yyyy-MM-dd";
const char *const StoredTime = "HH:mm:ss";

std::optional<QDateTime> parseDateTime(const QString &text)
{
    const QString t = text.trimmed();
    for (const char *f : { "yyyy-MM-dd", "yyyy-MM-dd HH:mm:ss", "yyyy-MM-ddTHH:mm:ss",
                           "dd/MM/yyyy", "dd/MM/yy", "dd/MM/yyyy HH:mm:ss" }) {
        const QDateTime dt = QDateTime::fromString(t, QString::fromLatin1(f));
        if (dt.isValid())
            return dt;
    }
    for (const char *f : { "HH:mm:ss", "HH:mm", "hh.mm.ss" }) {
        const QTime time = QTime::fromString(t, QString::fromLatin1(f));
        if (time.isValid())
            return QDateTime(QDate(1899, 12, 30), time);
    }
    return std::nullopt;
}

int clampToInt(double value)
{
    if (value <= double(INT_MIN))
        return INT_MIN;
    if (value >= double(INT_MAX))
        return INT_MAX;
    return int(value);
}

} // namespace

PowGrid::PowGrid(QWidget *parent)
    : QWidget(parent)
    , mHeaders(new clsHeaders(this))
    , mItems(new clsPowGridItems(this))
    , mTxtInput(new GridTextEditor(this))
    , mCmbInput(new GridComboEditor(this))
    , mDtpInput(new GridDateEditor(this))
    , mUpdInput(new QSpinBox(this))
    , mVBar(new QScrollBar(Qt::Vertical, this))
    , mHBar(new QScrollBar(Qt::Horizontal, this))
{
    // The grid takes the focus itself when a cell is clicked. It does not take
    // it from a click on the up-down beside the text editor, which would end
    // the edit.
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    // The cursor shows where a column's edge can be dragged.
    setMouseTracking(true);
    mUpdInput->setObjectName(QStringLiteral("updInput"));
    // The up-down goes with the text editor and never takes the focus from it.
    mUpdInput->setFocusPolicy(Qt::NoFocus);
    mUpdInput->setButtonSymbols(QAbstractSpinBox::UpDownArrows);
    for (QWidget *editor : { static_cast<QWidget *>(mTxtInput), static_cast<QWidget *>(mCmbInput),
                             static_cast<QWidget *>(mDtpInput), static_cast<QWidget *>(mUpdInput) })
        editor->hide();
    mHBar->hide();

    auto *keys = new GridEditorKeys(this);
    keys->watch(*mTxtInput);
    keys->watch(*mCmbInput);
    keys->watch(*mDtpInput);
    connect(keys, &GridEditorKeys::enterPressed, this, &PowGrid::HideInputs);
    connect(keys, &GridEditorKeys::escapePressed, this, &PowGrid::cancelEdit);
    connect(keys, &GridEditorKeys::focusLost, this, &PowGrid::HideInputs);
    connect(mCmbInput, &GridComboEditor::picked, this, &PowGrid::HideInputs);
    connect(mUpdInput, &QSpinBox::valueChanged, this, [this](int value) {
        if (mTxtInput->isVisible())
            mTxtInput->setText(QString::number(value));
    });
    connect(mVBar, &QScrollBar::valueChanged, this, [this](int value) {
        if (mFirstVisible == value + 1)
            return;
        HideInputs();
        mFirstVisible = value + 1;
        update();
        emit ScrollGrid();
    });
    connect(mHBar, &QScrollBar::valueChanged, this, [this] {
        HideInputs();
        update();
    });

    connect(mHeaders, &clsHeaders::ItemAdded, this, &PowGrid::modelChanged);
    connect(mItems, &clsPowGridItems::ItemAdded, this, &PowGrid::modelChanged);
    connect(mItems, &clsPowGridItems::ItemChanged, this, [this] {
        if (mLook.AutoRefresh)
            RefreshCells();
    });
    connect(mItems, &clsPowGridItems::ItemRemoved, this, &PowGrid::modelRemoved);

    InitProperties();
    mInitialising = false;
    RedrawGrid();
}

PowGrid::~PowGrid() = default;

QFont PowGrid::ambientFont() const
{
    return parentWidget() ? parentWidget()->font() : QApplication::font();
}

void PowGrid::InitProperties()
{
    mLook = PowGridLook();
    const QFont host = ambientFont();
    mLook.Font = host;
    mLook.HeaderFont = host;
    mLook.ButtonFont = host;
    mLook.TitleFont = host;
    RedrawGrid();
}

void PowGrid::ReadProperties(const QVariantMap &bag)
{
    InitProperties();
    PropertyBag::read(*this, bag);
}

void PowGrid::WriteProperties(QVariantMap &bag) const
{
    PropertyBag::write(*this, bag);
}

void PowGrid::ReadProperties(QSettings &settings)
{
    InitProperties();
    PropertyBag::read(*this, settings);
}

void PowGrid::WriteProperties(QSettings &settings) const
{
    PropertyBag::write(*this, settings);
}

void PowGrid::setHeadlineColor(quint32 New_HeadlineColor)
{
    mLook.HeadlineColor = New_HeadlineColor; RedrawGrid();
}

void PowGrid::setShadowColor(quint32 New_ShadowColor)
{
    mLook.ShadowColor = New_ShadowColor; RedrawGrid();
}

void PowGrid::setTextColor(quint32 New_TextColor)
{
    mLook.TextColor = New_TextColor; RedrawGrid();
}

void PowGrid::setSelRow(int New_SelRow)
{
    mLook.SelRow = New_SelRow; RefreshCells();
}

void PowGrid::setFont(const QFont &New_Font)
{
    mLook.Font = New_Font; RedrawGrid();
}

void PowGrid::setHeaderFont(const QFont &New_HeaderFont)
{
    mLook.HeaderFont = New_HeaderFont; RedrawGrid();
}

void PowGrid::setHeaderHeight(int New_HeaderHeight)
{
    mLook.HeaderHeight = New_HeaderHeight; RedrawGrid();
}

void PowGrid::setCellHeight(int New_CellHeight)
{
    mLook.CellHeight = New_CellHeight; RedrawGrid();
}

void PowGrid::setAllowEdit(bool New_AllowEdit)
{
    mLook.AllowEdit = New_AllowEdit; RedrawGrid();
}

void PowGrid::setColorUneditable(quint32 New_ColorUneditable)
{
    mLook.ColorUneditable = New_ColorUneditable; RedrawGrid();
}

void PowGrid::setColorEditable(quint32 New_ColorEditable)
{
    mLook.ColorEditable = New_ColorEditable; RedrawGrid();
}

void PowGrid::setColorSelectedRow(quint32 New_ColorSelectedRow)
{
    mLook.ColorSelectedRow = New_ColorSelectedRow; RedrawGrid();
}

void PowGrid::setShowSelectedRow(bool New_ShowSelectedRow)
{
    mLook.ShowSelectedRow = New_ShowSelectedRow; RedrawGrid();
}

void PowGrid::setColorSelectedText(quint32 New_ColorSelectedText)
{
    mLook.ColorSelectedText = New_ColorSelectedText; RedrawGrid();
}

void PowGrid::setColorLightShadow(quint32 New_ColorLightShadow)
{
    mLook.ColorLightShadow = New_ColorLightShadow; RedrawGrid();
}

void PowGrid::setColorDarkShadow(quint32 New_ColorDarkShadow)
{
    mLook.ColorDarkShadow = New_ColorDarkShadow; RedrawGrid();
}

void PowGrid::setColorUnused(quint32 New_ColorUnused)
{
    mLook.ColorUnused = New_ColorUnused; RedrawGrid();
}

void PowGrid::setColorGrid(quint32 New_ColorGrid)
{
    mLook.ColorGrid = New_ColorGrid; RedrawGrid();
}

void PowGrid::setImageList(const QList<QPixmap> &New_ImageList)
{
    mLook.ImageList = New_ImageList; RedrawGrid();
}

void PowGrid::setHScrollIncrement(int New_HScrollIncrement)
{
    mLook.HScrollIncrement = New_HScrollIncrement; RedrawGrid();
}

void PowGrid::setAutoRefresh(bool New_AutoRefresh)
{
    mLook.AutoRefresh = New_AutoRefresh; RedrawGrid();
}

void PowGrid::setCellHeightMargin(int New_CellHeightMargin)
{
    mLook.CellHeightMargin = New_CellHeightMargin; RedrawGrid();
}

void PowGrid::setColorHeadlineShadow(quint32 New_ColorHeadlineShadow)
{
    mLook.ColorHeadlineShadow = New_ColorHeadlineShadow; RedrawGrid();
}

void PowGrid::setShowVerticalBar(bool New_ShowVerticalBar)
{
    mLook.ShowVerticalBar = New_ShowVerticalBar; RedrawGrid();
}

void PowGrid::setCellLines(int New_CellLines)
{
    mLook.CellLines = New_CellLines; RedrawGrid();
}

void PowGrid::setBorderStyle(int New_BorderStyle)
{
    mLook.BorderStyle = New_BorderStyle; RedrawGrid();
}

void PowGrid::setColorHeadlineText(quint32 New_ColorHeadlineText)
{
    mLook.ColorHeadlineText = New_ColorHeadlineText; RedrawGrid();
}

void PowGrid::setColorUneditableAlternate(quint32 New_ColorUneditableAlternate)
{
    mLook.ColorUneditableAlternate = New_ColorUneditableAlternate; RedrawGrid();
}

void PowGrid::setAlternateColors(bool New_AlternateColors)
{
    mLook.AlternateColors = New_AlternateColors; RedrawGrid();
}

void PowGrid::setUseTouchScreen(bool New_UseTouchScreen)
{
    mLook.UseTouchScreen = New_UseTouchScreen; RedrawGrid();
}

void PowGrid::setImageListHeader(const QList<QPixmap> &New_ImageListHeader)
{
    mLook.ImageListHeader = New_ImageListHeader; RedrawGrid();
}

void PowGrid::setButtonFont(const QFont &New_ButtonFont)
{
    mLook.ButtonFont = New_ButtonFont; RedrawGrid();
}

void PowGrid::setButtonRoundSize(int New_ButtonRoundSize)
{
    mLook.ButtonRoundSize = New_ButtonRoundSize; RedrawGrid();
}

void PowGrid::setButtonColor(quint32 New_ButtonColor)
{
    mLook.ButtonColor = New_ButtonColor; RedrawGrid();
}

void PowGrid::setButtonBorderColor(quint32 New_ButtonBorderColor)
{
    mLook.ButtonBorderColor = New_ButtonBorderColor; RedrawGrid();
}

void PowGrid::setButtonClickColor(quint32 New_ButtonClickColor)
{
    mLook.ButtonClickColor = New_ButtonClickColor; RedrawGrid();
}

void PowGrid::setColorProgressBar(quint32 New_ColorProgressBar)
{
    mLook.ColorProgressBar = New_ColorProgressBar; RedrawGrid();
}

void PowGrid::setColorEmptyProgressBar(quint32 New_ColorEmptyProgressBar)
{
    mLook.ColorEmptyProgressBar = New_ColorEmptyProgressBar; RedrawGrid();
}

void PowGrid::setTitleFont(const QFont &New_TitleFont)
{
    mLook.TitleFont = New_TitleFont; RedrawGrid();
}

void PowGrid::setColorTitleBackground(quint32 New_ColorTitleBackground)
{
    mLook.ColorTitleBackground = New_ColorTitleBackground; RedrawGrid();
}

void PowGrid::setColorTitleText(quint32 New_ColorTitleText)
{
    mLook.ColorTitleText = New_ColorTitleText; RedrawGrid();
}

void PowGrid::setAllowExpandCollapse(bool New_AllowExpandCollapse)
{
    mLook.AllowExpandCollapse = New_AllowExpandCollapse; RedrawGrid();
}

// ---- layout ---------------------------------------------------------------

QRect PowGrid::innerRect() const
{
    const int border = mLook.BorderStyle == 1 ? 1 : 0;
    return rect().adjusted(border, border, -border, -border);
}

QRect PowGrid::clientRect() const
{
    QRect r = innerRect();
    if (mVBar->isVisibleTo(this))
        r.setRight(mVBar->geometry().left() - 1);
    if (mHBar->isVisibleTo(this))
        r.setBottom(mHBar->geometry().top() - 1);
    return r;
}

int PowGrid::rowHeight() const
{
    if (mLook.CellHeight > 0)
        return std::max(1, Twips::toPixelsY(mLook.CellHeight, this));
    return QFontMetrics(mLook.Font).height() + Twips::toPixelsY(mLook.CellHeightMargin, this);
}

int PowGrid::headerHeight() const
{
    if (mLook.HeaderHeight > 0)
        return Twips::toPixelsY(mLook.HeaderHeight, this);
    return QFontMetrics(mLook.HeaderFont).height() + Twips::toPixelsY(mLook.CellHeightMargin, this);
}

int PowGrid::VisibleCells() const
{
    return std::max(0, (clientRect().height() - headerHeight()) / rowHeight());
}

int PowGrid::ScaleWidth() const
{
    return Twips::fromPixelsX(innerRect().width(), this);
}

int PowGrid::ScaleHeight() const
{
    return Twips::fromPixelsY(innerRect().height(), this);
}

int PowGrid::columnWidthPixels(int column) const
{
    const Header *h = mHeaders->at(column);
    return h && h->Visible ? Twips::toPixelsX(h->ColumnWidth, this) : 0;
}

int PowGrid::columnLeft(int column) const
{
    int left = 0;
    for (int c = 0; c < column; ++c)
        left += columnWidthPixels(c);
    return left;
}

int PowGrid::contentWidth() const
{
    return columnLeft(mHeaders->Count());
}

int PowGrid::horizontalOffset() const
{
    return mHBar->isVisibleTo(this) ? mHBar->value() * std::max(1, Twips::toPixelsX(mLook.HScrollIncrement, this)) : 0;
}

int PowGrid::maxFirstVisible() const
{
    return std::max(1, mItems->CountVisible() - VisibleCells() + 1);
}

int PowGrid::rowPositionOfVisible(int visible) const
{
    return visible + mItems->CountVisibleOffset(visible);
}

int PowGrid::visiblePositionOf(int row) const
{
    const PowGridItem *item = mItems->Item(row);
    if (!item || !item->Visible)
        return 0;
    int visible = 0;
    for (int r = 1; r <= row; ++r)
        visible += mItems->Item(r)->Visible ? 1 : 0;
    return visible;
}

// The top of a shown row, or INT_MIN when the row is not on the screen.
int PowGrid::rowTop(int row) const
{
    const int visible = visiblePositionOf(row);
    if (visible < mFirstVisible)
        return INT_MIN;
    const QRect client = clientRect();
    const int top = client.top() + headerHeight() + (visible - mFirstVisible) * rowHeight();
    return top > client.bottom() ? INT_MIN : top;
}

QRect PowGrid::cellRect(int row, int column) const
{
    const int top = rowTop(row);
    const int width = columnWidthPixels(column);
    if (top == INT_MIN || width <= 0)
        return QRect();
    const QRect client = clientRect();
    const QRect cell(client.left() + columnLeft(column) - horizontalOffset(), top, width, rowHeight());
    return cell.intersected(client);
}

QRect PowGrid::titleBoxRect(int row) const
{
    const int top = rowTop(row);
    const PowGridItem *item = mItems->Item(row);
    if (top == INT_MIN || !item || !item->TitleLine)
        return QRect();
    const int size = std::min(rowHeight() - 2, 11);
    return QRect(clientRect().left() + 4, top + (rowHeight() - size) / 2, size, size);
}

int PowGrid::rowAt(QPoint point) const
{
    const QRect client = clientRect();
    if (!client.contains(point) || point.y() < client.top() + headerHeight())
        return 0;
    const int visible = mFirstVisible + (point.y() - client.top() - headerHeight()) / rowHeight();
    if (visible > mItems->CountVisible())
        return 0;
    return rowPositionOfVisible(visible);
}

int PowGrid::columnAt(QPoint point) const
{
    const int x = point.x() - clientRect().left() + horizontalOffset();
    int left = 0;
    for (int c = 0; c < mHeaders->Count(); ++c) {
        const int width = columnWidthPixels(c);
        if (x >= left && x < left + width)
            return c;
        left += width;
    }
    return -1;
}

void PowGrid::updateScrollBars()
{
    const QRect inner = innerRect();
    const int barWidth = mVBar->sizeHint().width();
    const int barHeight = mHBar->sizeHint().height();
    mVBar->setVisible(mLook.ShowVerticalBar);
    const int widthForCells = inner.width() - (mLook.ShowVerticalBar ? barWidth : 0);
    const bool needH = contentWidth() > widthForCells;
    mHBar->setVisible(needH);
    const int barsBottom = inner.bottom() - (needH ? barHeight : 0);
    if (mLook.ShowVerticalBar)
        mVBar->setGeometry(inner.right() - barWidth + 1, inner.top(), barWidth,
                           barsBottom - inner.top() + 1);
    if (needH) {
        mHBar->setGeometry(inner.left(), inner.bottom() - barHeight + 1, widthForCells, barHeight);
        const int step = std::max(1, Twips::toPixelsX(mLook.HScrollIncrement, this));
        const int excess = contentWidth() - widthForCells;
        mHBar->setRange(0, (excess + step - 1) / step);
    }
    mFirstVisible = std::clamp(mFirstVisible, 1, maxFirstVisible());
    const QSignalBlocker block(mVBar);
    mVBar->setRange(0, maxFirstVisible() - 1);
    mVBar->setPageStep(std::max(1, VisibleCells()));
    mVBar->setValue(mFirstVisible - 1);
}

// ---- methods --------------------------------------------------------------

void PowGrid::RefreshCells()
{
    update();
}

void PowGrid::RedrawGrid()
{
    if (mInitialising)
        return;
    updateScrollBars();
    update();
}

void PowGrid::Refresh()
{
    RedrawGrid();
    repaint();
}

PowGridItem *PowGrid::SelectedItem() const
{
    return mLook.SelRow > 0 ? mItems->Item(mLook.SelRow) : nullptr;
}

void PowGrid::setFirstVisible(int New_FirstVisible)
{
    mVBar->setValue(std::clamp(New_FirstVisible, 1, maxFirstVisible()) - 1);
}

void PowGrid::MouseWheel(int Delta)
{
    mWheelRemainder += Delta;
    const int notches = mWheelRemainder / 120;
    mWheelRemainder %= 120;
    if (notches != 0)
        setFirstVisible(mFirstVisible - notches * WheelRowsPerNotch);
}

void PowGrid::CollapseAll()
{
    HideInputs();
    for (int row = 1; row <= mItems->Count(); ++row)
        if (mItems->Item(row)->TitleLine)
            for (int under : rowsUnderTitle(row))
                mItems->Item(under)->Visible = false;
    RedrawGrid();
}

void PowGrid::AutoSizeHeaders()
{
    autoSize(false, this);
}

void PowGrid::AutoSizeHeadersFull()
{
    autoSize(true, this);
}

void PowGrid::AutoSizeHeadersForPrint(QPrinter &printer)
{
    autoSize(true, &printer);
    GridPrinter::fitToPage(*this, printer);
}

void PowGrid::autoSize(bool hiddenRowsToo, const QPaintDevice *device)
{
    const QFontMetrics cellMetrics(mLook.Font, device);
    const QFontMetrics headerMetrics(mLook.HeaderFont, device);
    const int padding = Twips::toPixelsX(2 * GridCellPainter::PaddingTwips, device);
    for (int c = 0; c < mHeaders->Count(); ++c) {
        Header *h = mHeaders->at(c);
        if (!h->Visible)
            continue;
        int widest = headerMetrics.horizontalAdvance(h->Caption);
        for (const PowGridItem *item : *mItems) {
            if (item->TitleLine || !(item->Visible || hiddenRowsToo))
                continue;
            widest = std::max(widest, cellMetrics.horizontalAdvance(DisplayText(item, c)));
        }
        h->ColumnWidth = Twips::fromPixelsX(widest + padding, device);
    }
    RedrawGrid();
}

void PowGrid::PrintGrid(QPrinter &printer)
{
    HideInputs();
    GridPrinter::print(*this, printer);
}

// ---- cells ----------------------------------------------------------------

int PowGrid::CellDataType(const PowGridItem *item, int column) const
{
    const Header *h = mHeaders->at(column);
    const int columnType = h ? h->ColumnDataType : dtText;
    // A row's own type stands in for the plain text of its editable cells;
    // the other cells (the row's name, its button) keep their column's type.
    const bool plainEditable = !h || (columnType == dtText && h->ColumnEditable);
    if (item && item->DataType != dtNone && plainEditable)
        return item->DataType;
    return columnType;
}

bool PowGrid::isChecked(const QString &text)
{
    if (text.trimmed().compare(QLatin1String("true"), Qt::CaseInsensitive) == 0)
        return true;
    const auto number = GridNumber::parse(text);
    return number && *number != 0;
}

// Either combo type takes the row's own list when it has one, else the
// column's.
std::shared_ptr<clsComboList> PowGrid::comboListOf(const PowGridItem *item, int column) const
{
    if (item && item->ComboList)
        return item->ComboList;
    const Header *h = mHeaders->at(column);
    return h ? h->ComboList : nullptr;
}

QString PowGrid::DisplayText(const PowGridItem *item, int column) const
{
    const QString text = item->CellText(column);
    switch (CellDataType(item, column)) {
    case dtPassword:
        return QString(text.size(), QLatin1Char('*'));
    case dtDate: {
        const auto dt = parseDateTime(text);
        return dt ? dt->toString(QStringLiteral("dd/MM/yy")) : text;
    }
    case dtTime: {
        const auto dt = parseDateTime(text);
        return dt ? dt->toString(QStringLiteral("hh.mm.ss")) : text;
    }
    case dtCombo:
    case dtItemCombo: {
        const auto list = comboListOf(item, column);
        return list && list->ItemExist(text) ? list->ItemText(text) : QStringLiteral("???");
    }
    case dtNumber: {
        const auto number = GridNumber::parse(text);
        return number ? GridNumber::plain(*number) : text;
    }
    case dtDecimal:
        return GridNumber::decimal(text).value_or(QStringLiteral("???"));
    case dtProgress: {
        const auto number = GridNumber::parse(text);
        return GridNumber::plain(number.value_or(0)) + QStringLiteral(" %");
    }
    default:
        return text;
    }
}

// ---- painting -------------------------------------------------------------

void PowGrid::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    GridCellPainter cells(*this, painter, this);
    cells.paintBackground(rect(), innerRect(), clientRect());
    const QRect client = clientRect();
    painter.setClipRect(client);
    const int offset = horizontalOffset();
    const int headerBottom = client.top() + headerHeight();
    for (int c = 0; c < mHeaders->Count(); ++c) {
        const int width = columnWidthPixels(c);
        if (width > 0)
            cells.paintHeader(QRect(client.left() + columnLeft(c) - offset, client.top(), width,
                                    headerHeight()),
                              *mHeaders->at(c));
    }
    int y = headerBottom;
    int visible = mFirstVisible;
    for (int row = rowPositionOfVisible(visible); row <= mItems->Count() && y <= client.bottom();
         ++row) {
        const PowGridItem *item = mItems->Item(row);
        if (!item->Visible)
            continue;
        const QRect line(client.left() - offset, y, contentWidth(), rowHeight());
        if (item->TitleLine) {
            const QList<int> under = rowsUnderTitle(row);
            const bool open = !under.isEmpty() && mItems->Item(under.first())->Visible;
            cells.paintTitle(QRect(client.left(), y, client.width(), rowHeight()), *item, open,
                             titleBoxRect(row));
        } else {
            for (int c = 0; c < mHeaders->Count(); ++c) {
                const int width = columnWidthPixels(c);
                if (width <= 0)
                    continue;
                GridCellPainter::CellState state;
                state.selected = mLook.ShowSelectedRow && row == mLook.SelRow;
                state.editable = mLook.AllowEdit && mHeaders->at(c)->ColumnEditable;
                state.alternate = mLook.AlternateColors && visible % 2 == 0;
                state.pressed = isButtonDown(row, c);
                cells.paintCell(QRect(line.left() + columnLeft(c), y, width, rowHeight()), *item, c,
                                state);
            }
        }
        if (row == mLook.SelRow && hasFocus())
            paintFocusRect(painter, QRect(client.left(), y, client.width(), rowHeight()));
        y += rowHeight();
        ++visible;
    }
}

// Round the selected row while the grid has the keyboard focus, as the
// platform draws a focused item.
void PowGrid::paintFocusRect(QPainter &painter, const QRect &line) const
{
    QStyleOptionFocusRect option;
    option.initFrom(this);
    option.rect = line.adjusted(0, 0, -1, -1);
    option.backgroundColor = OleColor::toColor(mLook.ColorSelectedRow, palette());
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    // Some styles draw no focus frame at all: a dotted line in the text colour
    // is always seen.
    QPen pen(OleColor::toColor(mLook.ColorSelectedText, palette()), 1, Qt::DotLine);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(line.adjusted(0, 0, -1, -1));
}

// ---- events ---------------------------------------------------------------

void PowGrid::resizeEvent(QResizeEvent *)
{
    HideInputs();
    RedrawGrid();
    emit Resize();
}

void PowGrid::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::PaletteChange)
        update();
    QWidget::changeEvent(event);
}

void PowGrid::wheelEvent(QWheelEvent *event)
{
    MouseWheel(event->angleDelta().y());
    event->accept();
}

// The keys of a list: Up and Down move the selected row, F2 edits its first
// editable cell, and so does Enter unless the host dropped it (KeyPress sees
// every typed key first, Enter included).
void PowGrid::keyPressEvent(QKeyEvent *event)
{
    if (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) {
        QWidget::keyPressEvent(event);
        return;
    }
    switch (event->key()) {
    case Qt::Key_Up:
        moveSelection(-1);
        return;
    case Qt::Key_Down:
        moveSelection(1);
        return;
    case Qt::Key_F2:
        editSelectedRow();
        return;
    default:
        break;
    }
    const QString typed = event->text();
    if (typed.isEmpty()) {
        QWidget::keyPressEvent(event);
        return;
    }
    short keyAscii = short(typed.front().unicode());
    emit KeyPress(keyAscii);
    if (keyAscii == '\r' && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter))
        editSelectedRow();
}

// The next or the previous shown row becomes the selected one, scrolled
// into view; from no selection, Down selects the first.
void PowGrid::moveSelection(int step)
{
    int row = mLook.SelRow;
    if (row < 1 || row > mItems->Count())
        row = step > 0 ? 0 : mItems->Count() + 1;
    for (int next = row + step; next >= 1 && next <= mItems->Count(); next += step) {
        if (!mItems->Item(next)->Visible)
            continue;
        HideInputs();
        mLook.SelRow = next;
        scrollToRow(next);
        emit ItemSelected(mItems->Item(next), nullptr);
        update();
        return;
    }
}

void PowGrid::scrollToRow(int row)
{
    const int position = visiblePositionOf(row);
    if (position == 0)
        return;
    if (position < mFirstVisible)
        setFirstVisible(position);
    else if (position >= mFirstVisible + std::max(1, VisibleCells()))
        setFirstVisible(position - std::max(1, VisibleCells()) + 1);
}

// The selected row's first cell that a click would edit in place.
void PowGrid::editSelectedRow()
{
    const int row = mLook.SelRow;
    if (!mLook.AllowEdit || row < 1 || row > mItems->Count() || mItems->Item(row)->TitleLine)
        return;
    scrollToRow(row);
    const PowGridItem *item = mItems->Item(row);
    for (int c = 0; c < mHeaders->Count(); ++c) {
        const int type = CellDataType(item, c);
        if (columnWidthPixels(c) <= 0 || !mHeaders->at(c)->ColumnEditable || type == dtButton || type == dtCheck
            || type == dtProgress)
            continue;
        beginEdit(row, c);
        return;
    }
}

void PowGrid::focusInEvent(QFocusEvent *event)
{
    update();
    QWidget::focusInEvent(event);
}

void PowGrid::focusOutEvent(QFocusEvent *event)
{
    update();
    QWidget::focusOutEvent(event);
}

void PowGrid::mousePressEvent(QMouseEvent *event)
{
    setFocus(Qt::MouseFocusReason);
    HideInputs();
    if (event->button() != Qt::LeftButton)
        return;
    const QPoint point = event->position().toPoint();
    mResizeColumn = columnEdgeAt(point);
    if (mResizeColumn >= 0)
        return;
    const int row = rowAt(point);
    if (row == 0)
        return;
    PowGridItem *item = mItems->Item(row);
    const int column = columnAt(point);
    mLook.SelRow = row;
    emit ItemSelected(item, mHeaders->at(column));
    update();
    if (item->TitleLine) {
        if (mLook.AllowExpandCollapse && titleBoxRect(row).contains(point))
            toggleTitle(row);
        return;
    }
    if (column >= 0)
        clickData(row, column);
}

void PowGrid::mouseMoveEvent(QMouseEvent *event)
{
    const QPoint point = event->position().toPoint();
    if (mResizeColumn < 0) {
        setCursor(columnEdgeAt(point) >= 0 ? Qt::SplitHCursor : Qt::ArrowCursor);
        return;
    }
    const int left = clientRect().left() + columnLeft(mResizeColumn) - horizontalOffset();
    const int width = std::max(MinimumColumnPixels, point.x() - left);
    mHeaders->at(mResizeColumn)->ColumnWidth = Twips::fromPixelsX(width, this);
    RedrawGrid();
}

void PowGrid::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && mResizeColumn >= 0) {
        const int column = mResizeColumn;
        mResizeColumn = -1;
        emit ColumnResized(column);
        return;
    }
    if (event->button() != Qt::LeftButton || mButtonRow == 0)
        return;
    const int row = mButtonRow;
    const int column = mButtonColumn;
    mButtonRow = 0;
    mButtonColumn = -1;
    update();
    const QPoint point = event->position().toPoint();
    if (rowAt(point) == row && columnAt(point) == column)
        emit ItemChanged(mItems->Item(row), column);
}

bool PowGrid::event(QEvent *event)
{
    // The grid's own keys go to the grid, not to a window's shortcut (F2
    // renames in the editor's window).
    if (event->type() == QEvent::ShortcutOverride) {
        auto *key = static_cast<QKeyEvent *>(event);
        if (key->modifiers() == Qt::NoModifier || key->modifiers() == Qt::KeypadModifier) {
            switch (key->key()) {
            case Qt::Key_Up:
            case Qt::Key_Down:
            case Qt::Key_F2:
            case Qt::Key_Return:
            case Qt::Key_Enter:
                event->accept();
                return true;
            default:
                break;
            }
        }
    }
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto *help = static_cast<QHelpEvent *>(event);
    const QString tip = toolTipAt(help->pos());
    if (tip.isEmpty()) {
        QToolTip::hideText();
        event->ignore();
    } else {
        QToolTip::showText(help->globalPos(), tip, this);
    }
    return true;
}

int PowGrid::columnEdgeAt(QPoint point) const
{
    const QRect client = clientRect();
    if (!client.contains(point) || point.y() >= client.top() + headerHeight())
        return -1;
    const int x = point.x() - client.left() + horizontalOffset();
    int right = 0;
    for (int c = 0; c < mHeaders->Count(); ++c) {
        const int width = columnWidthPixels(c);
        right += width;
        if (width > 0 && std::abs(x - right) <= ResizeGripPixels)
            return c;
    }
    return -1;
}

QString PowGrid::toolTipAt(QPoint point) const
{
    const int row = rowAt(point);
    const int column = columnAt(point);
    if (row == 0 || column < 0)
        return QString();
    const PowGridItem *item = mItems->Item(row);
    QStringList lines;
    if (!item->ToolTip.isEmpty())
        lines << item->ToolTip;
    const int type = CellDataType(item, column);
    const QString text = DisplayText(item, column);
    const int room = columnWidthPixels(column) - Twips::toPixelsX(2 * GridCellPainter::PaddingTwips, this);
    if (!item->TitleLine && type != dtButton && type != dtCheck && type != dtProgress
        && QFontMetrics(mLook.Font).horizontalAdvance(text) > room)
        lines << text;
    return lines.join(QLatin1Char('\n'));
}

bool PowGrid::isButtonShown(const PowGridItem *item, int column) const
{
    const Header *h = mHeaders->at(column);
    return !(h && h->HideEmptyButtons && item->CellText(column).isEmpty());
}

// A press on a data cell: a button goes down, a check box flips, and any other
// editable cell gets its editor. Progress cells are for showing only.
void PowGrid::clickData(int row, int column)
{
    PowGridItem *item = mItems->Item(row);
    const int type = CellDataType(item, column);
    if (type == dtButton) {
        if (!isButtonShown(item, column))
            return;
        mButtonRow = row;
        mButtonColumn = column;
        update();
        return;
    }
    const bool editable = mLook.AllowEdit && mHeaders->at(column)->ColumnEditable;
    if (!editable || type == dtProgress)
        return;
    if (type == dtCheck) {
        toggleCheck(item, column);
        return;
    }
    beginEdit(row, column);
}

// A click on a check box stores "1" or "0", the opposite of what it showed, and
// counts as a committed edit.
void PowGrid::toggleCheck(PowGridItem *item, int column)
{
    emit BeforeEdit(item, mHeaders->at(column), column);
    item->setCellText(column, isChecked(item->CellText(column)) ? QStringLiteral("0")
                                                                : QStringLiteral("1"));
    emit ItemChanged(item, column);
}

// ---- editing --------------------------------------------------------------

void PowGrid::beginEdit(int row, int column)
{
    PowGridItem *item = mItems->Item(row);
    Header *header = mHeaders->at(column);
    emit BeforeEdit(item, header, column);
    const QRect cell = cellRect(row, column);
    if (cell.isEmpty())
        return;
    mEditRow = row;
    mEditColumn = column;
    mEditType = CellDataType(item, column);
    mCancel = false;
    switch (mEditType) {
    case dtDate:
    case dtTime:
        showDateEditor(item, column, mEditType, cell);
        break;
    case dtCombo:
    case dtItemCombo:
        showComboEditor(item, column, cell);
        break;
    default:
        showTextEditor(item, column, mEditType, cell);
        break;
    }
    emit BeginEdit(item, header, column);
}

void PowGrid::showTextEditor(PowGridItem *item, int column, int type, const QRect &cell)
{
    QRect textArea = cell;
    if (type == dtNumber) {
        const Header *h = mHeaders->at(column);
        const int upDownWidth = std::min(cell.width() / 2, 18);
        textArea.setRight(cell.right() - upDownWidth);
        const QSignalBlocker block(mUpdInput);
        mUpdInput->setRange(clampToInt(h->NumericMin), clampToInt(h->NumericMax));
        mUpdInput->setValue(clampToInt(GridNumber::parse(item->CellText(column)).value_or(0)));
        mUpdInput->setGeometry(textArea.right() + 1, cell.top(), upDownWidth, cell.height());
        mUpdInput->show();
    }
    mTxtInput->setDataType(type);
    mTxtInput->setEchoMode(type == dtPassword ? QLineEdit::Password : QLineEdit::Normal);
    mTxtInput->setFont(mLook.Font);
    mTxtInput->setText(item->CellText(column));
    mTxtInput->setGeometry(textArea);
    mTxtInput->show();
    mTxtInput->setFocus(Qt::OtherFocusReason);
    mTxtInput->selectAll();
}

void PowGrid::showDateEditor(PowGridItem *item, int column, int type, const QRect &cell)
{
    const auto dt = parseDateTime(item->CellText(column));
    mDtpInput->setDisplayFormat(type == dtDate ? QStringLiteral("dd/MM/yy")
                                               : QStringLiteral("hh.mm.ss"));
    mDtpInput->setDateTime(dt.value_or(QDateTime::currentDateTime()));
    mDtpInput->setGeometry(cell);
    mDtpInput->show();
    mDtpInput->setFocus(Qt::OtherFocusReason);
}

void PowGrid::showComboEditor(PowGridItem *item, int column, const QRect &cell)
{
    const QSignalBlocker block(mCmbInput);
    mCmbInput->clear();
    const auto list = comboListOf(item, column);
    int current = -1;
    if (list) {
        int line = 0;
        for (ComboItem *choice : *list) {
            mCmbInput->addItem(choice->strText);
            choice->ComboListIndex = line;
            if (!choice->Key.isEmpty() && choice->Key == item->CellText(column))
                current = line;
            ++line;
        }
    }
    mCmbInput->setCurrentIndex(current);
    mCmbInput->setGeometry(cell);
    mCmbInput->show();
    mCmbInput->setFocus(Qt::OtherFocusReason);
}

void PowGrid::cancelEdit()
{
    mCancel = true;
    HideInputs();
}

// Hides each shown editor and lets the window events waiting behind it run, then
// commits the edit unless it was cancelled. The edit is closed before anything
// else, so an editor losing the focus while it hides does not commit twice.
void PowGrid::HideInputs()
{
    const int row = mEditRow;
    const int column = mEditColumn;
    const int type = mEditType;
    const bool cancelled = mCancel;
    mEditRow = 0;
    mEditColumn = -1;
    mEditType = dtNone;
    mCancel = false;
    const bool hadFocus = mTxtInput->hasFocus() || mCmbInput->hasFocus() || mDtpInput->hasFocus();
    for (QWidget *editor : { static_cast<QWidget *>(mTxtInput), static_cast<QWidget *>(mCmbInput),
                             static_cast<QWidget *>(mDtpInput), static_cast<QWidget *>(mUpdInput) }) {
        if (editor->isVisible()) {
            editor->hide();
            QCoreApplication::processEvents();
        }
    }
    if (hadFocus)
        setFocus(Qt::OtherFocusReason);
    if (row == 0 || cancelled)
        return;
    if (PowGridItem *item = mItems->Item(row))
        commit(item, column, type);
}

// What the text, number or date editor leaves to store; nothing when its text is
// not a number where one is needed.
std::optional<QString> PowGrid::committedText(int type) const
{
    switch (type) {
    case dtDate:
        return mDtpInput->date().toString(QString::fromLatin1(StoredDate));
    case dtTime:
        return mDtpInput->time().toString(QString::fromLatin1(StoredTime));
    case dtNumber: {
        const auto number = GridNumber::parse(mTxtInput->text());
        if (!number)
            return std::nullopt;
        return GridNumber::plain(*number);
    }
    case dtDecimal:
        return GridNumber::decimal(mTxtInput->text());
    default:
        return mTxtInput->text();
    }
}

void PowGrid::commit(PowGridItem *item, int column, int type)
{
    std::optional<QString> text;
    if (type == dtCombo || type == dtItemCombo) {
        const auto list = comboListOf(item, column);
        if (list && mCmbInput->currentIndex() >= 0)
            text = list->ItemKey(mCmbInput->currentIndex());
    } else {
        text = committedText(type);
    }
    if (text && *text != item->CellText(column))
        item->setCellText(column, *text);
    emit ItemChanged(item, column);
}

// ---- title lines ----------------------------------------------------------

QList<int> PowGrid::rowsUnderTitle(int row) const
{
    QList<int> rows;
    for (int r = row + 1; r <= mItems->Count() && !mItems->Item(r)->TitleLine; ++r)
        rows << r;
    return rows;
}

// Each row under the line flips its own Visible flag; the first one says
// whether this is a collapse or an expand. A group whose rows were mixed stays
// mixed, each row inverted: that is how title lines behave.
void PowGrid::toggleTitle(int row)
{
    const QList<int> under = rowsUnderTitle(row);
    if (under.isEmpty())
        return;
    const bool collapse = mItems->Item(under.first())->Visible;
    for (int r : under) {
        PowGridItem *item = mItems->Item(r);
        item->Visible = !item->Visible;
    }
    if (collapse)
        emit BeforeCollapse();
    else
        emit BeforeExpand();
    RedrawGrid();
    if (collapse)
        emit AfterCollapse();
    else
        emit AfterExpand();
}

// ---- model events ---------------------------------------------------------

void PowGrid::modelChanged()
{
    if (mLook.AutoRefresh)
        RedrawGrid();
}

// Rows went away: an edit or a pressed button on a row that may be gone ends
// without committing, and a selection past the end is dropped.
void PowGrid::modelRemoved()
{
    mCancel = true;
    HideInputs();
    mButtonRow = 0;
    mButtonColumn = -1;
    if (mLook.SelRow > mItems->Count())
        mLook.SelRow = 0;
    if (mLook.AutoRefresh)
        RedrawGrid();
}
