// SPDX-License-Identifier: MIT
#pragma once

#include "GridDataType.h"
#include "PowGridLook.h"
#include "clsHeaders.h"
#include "clsPowGridItems.h"

#include <QFont>
#include <QList>
#include <QPixmap>
#include <QPrinter>
#include <QSettings>
#include <QVariantMap>
#include <QWidget>

#include <optional>

class QPainter;
class QScrollBar;
class QSpinBox;
class GridComboEditor;
class GridDateEditor;
class GridTextEditor;

// The program's own table: columns (Headers) and rows (Items) whose cells are
// drawn by data type and edited in place by an editor laid over the cell. Rows
// may be grouped under title lines that expand and collapse.
//
// Colours are 0x00BBGGRR values or system colour indexes (see OleColor);
// HeaderHeight, CellHeight, CellHeightMargin, HScrollIncrement and the columns'
// widths are in twips.
//
// A cell's data type is its column's ColumnDataType, except that a row with a
// DataType of its own (not dtNone) uses it in the editable plain-text (dtText)
// columns: a row that needs a drop-down value among text rows says so itself,
// while its name column (made not editable by the host) and its button column
// stay as they are.
//
// CellLines 0 draws no lines between cells; any other value draws single lines.
// BorderStyle 1 draws a one-pixel border, 0 none. UseTouchScreen is kept and
// saved with the look but changes nothing: the editors behave the same for
// mouse and touch.
//
// Column numbers in the events and in PowGridItem::CellText are 0-based: the
// column of Headers().Item(n) is n - 1.
//
// From the keyboard: Up and Down move the selected row (ItemSelected is then
// raised without a column), F2 or Enter edits its first editable cell, and
// the editor's Enter commits, Escape cancels; while the grid has the focus,
// the selected row is drawn with a focus frame.
class PowGrid : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(uint HeadlineColor READ HeadlineColor WRITE setHeadlineColor)
    Q_PROPERTY(uint ShadowColor READ ShadowColor WRITE setShadowColor)
    Q_PROPERTY(uint TextColor READ TextColor WRITE setTextColor)
    Q_PROPERTY(int SelRow READ SelRow WRITE setSelRow)
    Q_PROPERTY(QFont Font READ Font WRITE setFont)
    Q_PROPERTY(QFont HeaderFont READ HeaderFont WRITE setHeaderFont)
    Q_PROPERTY(int HeaderHeight READ HeaderHeight WRITE setHeaderHeight)
    Q_PROPERTY(int CellHeight READ CellHeight WRITE setCellHeight)
    Q_PROPERTY(bool AllowEdit READ AllowEdit WRITE setAllowEdit)
    Q_PROPERTY(uint ColorUneditable READ ColorUneditable WRITE setColorUneditable)
    Q_PROPERTY(uint ColorEditable READ ColorEditable WRITE setColorEditable)
    Q_PROPERTY(uint ColorSelectedRow READ ColorSelectedRow WRITE setColorSelectedRow)
    Q_PROPERTY(bool ShowSelectedRow READ ShowSelectedRow WRITE setShowSelectedRow)
    Q_PROPERTY(uint ColorSelectedText READ ColorSelectedText WRITE setColorSelectedText)
    Q_PROPERTY(uint ColorLightShadow READ ColorLightShadow WRITE setColorLightShadow)
    Q_PROPERTY(uint ColorDarkShadow READ ColorDarkShadow WRITE setColorDarkShadow)
    Q_PROPERTY(uint ColorUnused READ ColorUnused WRITE setColorUnused)
    Q_PROPERTY(uint ColorGrid READ ColorGrid WRITE setColorGrid)
    Q_PROPERTY(QList<QPixmap> ImageList READ ImageList WRITE setImageList)
    Q_PROPERTY(int HScrollIncrement READ HScrollIncrement WRITE setHScrollIncrement)
    Q_PROPERTY(bool AutoRefresh READ AutoRefresh WRITE setAutoRefresh)
    Q_PROPERTY(int CellHeightMargin READ CellHeightMargin WRITE setCellHeightMargin)
    Q_PROPERTY(uint ColorHeadlineShadow READ ColorHeadlineShadow WRITE setColorHeadlineShadow)
    Q_PROPERTY(bool ShowVerticalBar READ ShowVerticalBar WRITE setShowVerticalBar)
    Q_PROPERTY(int CellLines READ CellLines WRITE setCellLines)
    Q_PROPERTY(int BorderStyle READ BorderStyle WRITE setBorderStyle)
    Q_PROPERTY(uint ColorHeadlineText READ ColorHeadlineText WRITE setColorHeadlineText)
    Q_PROPERTY(uint ColorUneditableAlternate READ ColorUneditableAlternate WRITE setColorUneditableAlternate)
    Q_PROPERTY(bool AlternateColors READ AlternateColors WRITE setAlternateColors)
    Q_PROPERTY(bool UseTouchScreen READ UseTouchScreen WRITE setUseTouchScreen)
    Q_PROPERTY(QList<QPixmap> ImageListHeader READ ImageListHeader WRITE setImageListHeader)
    Q_PROPERTY(QFont ButtonFont READ ButtonFont WRITE setButtonFont)
    Q_PROPERTY(int ButtonRoundSize READ ButtonRoundSize WRITE setButtonRoundSize)
    Q_PROPERTY(uint ButtonColor READ ButtonColor WRITE setButtonColor)
    Q_PROPERTY(uint ButtonBorderColor READ ButtonBorderColor WRITE setButtonBorderColor)
    Q_PROPERTY(uint ButtonClickColor READ ButtonClickColor WRITE setButtonClickColor)
    Q_PROPERTY(uint ColorProgressBar READ ColorProgressBar WRITE setColorProgressBar)
    Q_PROPERTY(uint ColorEmptyProgressBar READ ColorEmptyProgressBar WRITE setColorEmptyProgressBar)
    Q_PROPERTY(QFont TitleFont READ TitleFont WRITE setTitleFont)
    Q_PROPERTY(uint ColorTitleBackground READ ColorTitleBackground WRITE setColorTitleBackground)
    Q_PROPERTY(uint ColorTitleText READ ColorTitleText WRITE setColorTitleText)
    Q_PROPERTY(bool AllowExpandCollapse READ AllowExpandCollapse WRITE setAllowExpandCollapse)

public:
    explicit PowGrid(QWidget *parent = nullptr);
    ~PowGrid() override;

    quint32 HeadlineColor() const { return mLook.HeadlineColor; }
    void setHeadlineColor(quint32 New_HeadlineColor);
    quint32 ShadowColor() const { return mLook.ShadowColor; }
    void setShadowColor(quint32 New_ShadowColor);
    quint32 TextColor() const { return mLook.TextColor; }
    void setTextColor(quint32 New_TextColor);
    int SelRow() const { return mLook.SelRow; }
    void setSelRow(int New_SelRow);
    QFont Font() const { return mLook.Font; }
    void setFont(const QFont &New_Font);
    QFont HeaderFont() const { return mLook.HeaderFont; }
    void setHeaderFont(const QFont &New_HeaderFont);
    int HeaderHeight() const { return mLook.HeaderHeight; }
    void setHeaderHeight(int New_HeaderHeight);
    int CellHeight() const { return mLook.CellHeight; }
    void setCellHeight(int New_CellHeight);
    bool AllowEdit() const { return mLook.AllowEdit; }
    void setAllowEdit(bool New_AllowEdit);
    quint32 ColorUneditable() const { return mLook.ColorUneditable; }
    void setColorUneditable(quint32 New_ColorUneditable);
    quint32 ColorEditable() const { return mLook.ColorEditable; }
    void setColorEditable(quint32 New_ColorEditable);
    quint32 ColorSelectedRow() const { return mLook.ColorSelectedRow; }
    void setColorSelectedRow(quint32 New_ColorSelectedRow);
    bool ShowSelectedRow() const { return mLook.ShowSelectedRow; }
    void setShowSelectedRow(bool New_ShowSelectedRow);
    quint32 ColorSelectedText() const { return mLook.ColorSelectedText; }
    void setColorSelectedText(quint32 New_ColorSelectedText);
    quint32 ColorLightShadow() const { return mLook.ColorLightShadow; }
    void setColorLightShadow(quint32 New_ColorLightShadow);
    quint32 ColorDarkShadow() const { return mLook.ColorDarkShadow; }
    void setColorDarkShadow(quint32 New_ColorDarkShadow);
    quint32 ColorUnused() const { return mLook.ColorUnused; }
    void setColorUnused(quint32 New_ColorUnused);
    quint32 ColorGrid() const { return mLook.ColorGrid; }
    void setColorGrid(quint32 New_ColorGrid);
    QList<QPixmap> ImageList() const { return mLook.ImageList; }
    void setImageList(const QList<QPixmap> &New_ImageList);
    int HScrollIncrement() const { return mLook.HScrollIncrement; }
    void setHScrollIncrement(int New_HScrollIncrement);
    bool AutoRefresh() const { return mLook.AutoRefresh; }
    void setAutoRefresh(bool New_AutoRefresh);
    int CellHeightMargin() const { return mLook.CellHeightMargin; }
    void setCellHeightMargin(int New_CellHeightMargin);
    quint32 ColorHeadlineShadow() const { return mLook.ColorHeadlineShadow; }
    void setColorHeadlineShadow(quint32 New_ColorHeadlineShadow);
    bool ShowVerticalBar() const { return mLook.ShowVerticalBar; }
    void setShowVerticalBar(bool New_ShowVerticalBar);
    int CellLines() const { return mLook.CellLines; }
    void setCellLines(int New_CellLines);
    int BorderStyle() const { return mLook.BorderStyle; }
    void setBorderStyle(int New_BorderStyle);
    quint32 ColorHeadlineText() const { return mLook.ColorHeadlineText; }
    void setColorHeadlineText(quint32 New_ColorHeadlineText);
    quint32 ColorUneditableAlternate() const { return mLook.ColorUneditableAlternate; }
    void setColorUneditableAlternate(quint32 New_ColorUneditableAlternate);
    bool AlternateColors() const { return mLook.AlternateColors; }
    void setAlternateColors(bool New_AlternateColors);
    bool UseTouchScreen() const { return mLook.UseTouchScreen; }
    void setUseTouchScreen(bool New_UseTouchScreen);
    QList<QPixmap> ImageListHeader() const { return mLook.ImageListHeader; }
    void setImageListHeader(const QList<QPixmap> &New_ImageListHeader);
    QFont ButtonFont() const { return mLook.ButtonFont; }
    void setButtonFont(const QFont &New_ButtonFont);
    int ButtonRoundSize() const { return mLook.ButtonRoundSize; }
    void setButtonRoundSize(int New_ButtonRoundSize);
    quint32 ButtonColor() const { return mLook.ButtonColor; }
    void setButtonColor(quint32 New_ButtonColor);
    quint32 ButtonBorderColor() const { return mLook.ButtonBorderColor; }
    void setButtonBorderColor(quint32 New_ButtonBorderColor);
    quint32 ButtonClickColor() const { return mLook.ButtonClickColor; }
    void setButtonClickColor(quint32 New_ButtonClickColor);
    quint32 ColorProgressBar() const { return mLook.ColorProgressBar; }
    void setColorProgressBar(quint32 New_ColorProgressBar);
    quint32 ColorEmptyProgressBar() const { return mLook.ColorEmptyProgressBar; }
    void setColorEmptyProgressBar(quint32 New_ColorEmptyProgressBar);
    QFont TitleFont() const { return mLook.TitleFont; }
    void setTitleFont(const QFont &New_TitleFont);
    quint32 ColorTitleBackground() const { return mLook.ColorTitleBackground; }
    void setColorTitleBackground(quint32 New_ColorTitleBackground);
    quint32 ColorTitleText() const { return mLook.ColorTitleText; }
    void setColorTitleText(quint32 New_ColorTitleText);
    bool AllowExpandCollapse() const { return mLook.AllowExpandCollapse; }
    void setAllowExpandCollapse(bool New_AllowExpandCollapse);

    // A new control's look: every design-time property at its default, the
    // fonts taken from the host (the parent's font, else the application's).
    void InitProperties();
    // Reads the saved look; a name that is missing keeps its default.
    void ReadProperties(const QVariantMap &bag);
    void WriteProperties(QVariantMap &bag) const;
    void ReadProperties(QSettings &settings);
    void WriteProperties(QSettings &settings) const;

    clsHeaders *Headers() const { return mHeaders; }
    clsPowGridItems *Items() const { return mItems; }

    // Ends any edit in progress (committing it unless it was cancelled) and
    // hides every editor.
    void HideInputs();
    void RefreshCells();
    // Recomputes the layout and the scroll bars, then repaints everything.
    void RedrawGrid();
    void Refresh();
    PowGridItem *SelectedItem() const;
    // The 1-based position, among the visible rows, of the row at the top.
    int FirstVisible() const { return mFirstVisible; }
    void setFirstVisible(int New_FirstVisible);
    // How many whole rows fit below the header.
    int VisibleCells() const;
    // The inner size in twips.
    int ScaleWidth() const;
    int ScaleHeight() const;
    WId hWnd() { return winId(); }
    // Sets each visible column's width to fit its caption and the texts of the
    // visible rows.
    void AutoSizeHeaders();
    // As AutoSizeHeaders, counting the rows hidden under title lines too.
    void AutoSizeHeadersFull();
    // As AutoSizeHeadersFull, measured with the printer's fonts, then narrowed
    // to the printer's page width when the columns would not fit on it.
    void AutoSizeHeadersForPrint(QPrinter &printer);
    // Prints the header and the visible rows (title lines included) to the
    // printer, page after page, the header again on every page.
    void PrintGrid(QPrinter &printer);
    // A mouse-wheel movement passed on by the host, in eighths of a degree as
    // wheel events give it (one notch is 120): each notch scrolls
    // WheelRowsPerNotch rows, a positive movement towards the top.
    void MouseWheel(int Delta);
    // Collapses every title line: every row under a title line is hidden.
    void CollapseAll();

    static constexpr int WheelRowsPerNotch = 3;

    // How a cell is shown and edited (see the class comment for which of the
    // row's and the column's type counts).
    int CellDataType(const PowGridItem *item, int column) const;
    // The text a cell shows (for check, button and progress cells the text that
    // goes with the drawing).
    QString DisplayText(const PowGridItem *item, int column) const;
    // Whether a check cell's text means "checked": "True" in any case or a
    // number other than 0.
    static bool isChecked(const QString &text);

    // The place of a cell on the screen, empty when it is not shown; `row` is
    // the row's 1-based position in Items, `column` 0-based.
    QRect cellRect(int row, int column) const;
    // The expand/collapse box of a title line; empty when it is not shown.
    QRect titleBoxRect(int row) const;
    int rowHeight() const;
    int headerHeight() const;
    // The row (1-based position in Items) and the column at a point; 0 and -1
    // when there is none.
    int rowAt(QPoint point) const;
    int columnAt(QPoint point) const;
    // The left edge of a column (0-based), in pixels of the scrolled content.
    int columnLeft(int column) const;
    int columnWidthPixels(int column) const;

    // The editors, for those who drive the grid from outside (tests, hosts).
    GridTextEditor *txtInput() const { return mTxtInput; }
    GridComboEditor *cmbInput() const { return mCmbInput; }
    GridDateEditor *dtpInput() const { return mDtpInput; }
    QSpinBox *updInput() const { return mUpdInput; }
    QScrollBar *verticalBar() const { return mVBar; }
    QScrollBar *horizontalBar() const { return mHBar; }
    // The row and column being edited (0 and -1 when none).
    int editRow() const { return mEditRow; }
    int editColumn() const { return mEditColumn; }

    // Whether a button cell shows its button (see Header::HideEmptyButtons).
    bool isButtonShown(const PowGridItem *item, int column) const;
    // The tooltip of the cell at a point: the row's own ToolTip, then the
    // cell's whole text when it does not fit the cell; empty when neither.
    QString toolTipAt(QPoint point) const;
    // The column (0-based) whose right edge in the header is at a point, where
    // a drag resizes it; -1 when there is none.
    int columnEdgeAt(QPoint point) const;
    // The narrowest a column can be dragged, in pixels.
    static constexpr int MinimumColumnPixels = 16;
    // How near a column's edge, in pixels, a press starts resizing it.
    static constexpr int ResizeGripPixels = 3;

    // Whether the button cell at row/column is drawn pressed.
    bool isButtonDown(int row, int column) const
    {
        return mButtonRow == row && mButtonColumn == column && row > 0;
    }

signals:
    // An edit was committed (whether or not the value changed), or a button
    // cell was clicked (with the button's column).
    void ItemChanged(PowGridItem *Item, int Column);
    // A cell was selected with the mouse: the row and the column's header; a
    // row chosen with Up or Down comes without a column (null).
    void ItemSelected(PowGridItem *Item, Header *Column);
    // A click on an editable cell, before its editor is shown.
    void BeforeEdit(PowGridItem *Item, Header *ColumnHeader, int Column);
    // The cell's editor has been shown.
    void BeginEdit(PowGridItem *Item, Header *ColumnHeader, int Column);
    void BeforeExpand();
    void BeforeCollapse();
    void AfterExpand();
    void AfterCollapse();
    // The vertical scroll bar moved.
    void ScrollGrid();
    void Resize();
    // A key was typed in the grid; the receiver may change the key (0 drops it).
    void KeyPress(short &KeyAscii);
    // The user dragged the right edge of a column (0-based) in the header to
    // give it a new ColumnWidth.
    void ColumnResized(int Column);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    bool event(QEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    QFont ambientFont() const;
    QRect innerRect() const;
    QRect clientRect() const;
    int contentWidth() const;
    int horizontalOffset() const;
    int maxFirstVisible() const;
    int rowPositionOfVisible(int visible) const;
    int visiblePositionOf(int row) const;
    int rowTop(int row) const;
    void updateScrollBars();
    void clickData(int row, int column);
    void moveSelection(int step);
    void scrollToRow(int row);
    void editSelectedRow();
    void paintFocusRect(QPainter &painter, const QRect &line) const;
    void beginEdit(int row, int column);
    void showTextEditor(PowGridItem *item, int column, int type, const QRect &cell);
    void showDateEditor(PowGridItem *item, int column, int type, const QRect &cell);
    void showComboEditor(PowGridItem *item, int column, const QRect &cell);
    std::shared_ptr<clsComboList> comboListOf(const PowGridItem *item, int column) const;
    void commit(PowGridItem *item, int column, int type);
    std::optional<QString> committedText(int type) const;
    void cancelEdit();
    void toggleCheck(PowGridItem *item, int column);
    void toggleTitle(int row);
    QList<int> rowsUnderTitle(int row) const;
    void autoSize(bool hiddenRowsToo, const QPaintDevice *device);
    void modelRemoved();
    void modelChanged();

    PowGridLook mLook;

    clsHeaders *mHeaders;
    clsPowGridItems *mItems;
    GridTextEditor *mTxtInput;
    GridComboEditor *mCmbInput;
    GridDateEditor *mDtpInput;
    QSpinBox *mUpdInput;
    QScrollBar *mVBar;
    QScrollBar *mHBar;

    int mFirstVisible = 1;
    int mEditRow = 0;
    int mEditColumn = -1;
    int mEditType = dtNone;
    bool mCancel = false;
    int mButtonRow = 0;
    int mButtonColumn = -1;
    int mWheelRemainder = 0;
    // The column whose edge is being dragged; -1 when none.
    int mResizeColumn = -1;
    bool mInitialising = true;
};
