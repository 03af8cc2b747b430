// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QSettings>
#include <QVariantMap>
#include <QWidget>

class SplitterBar;
class SplitterButton;

// A container of two widgets with a bar between them. Dragging the bar moves the
// boundary within the minimum sizes of the two sides; the button on the bar
// collapses one side and brings it back. Lengths are in twips.
//
// SplitterOrientation: 0 puts the widgets side by side (a vertical bar that moves
// left and right), 1 puts them one above the other (a horizontal bar that moves
// up and down). SplitterPosition is the distance from the left (top) edge to the
// bar. ResizeButton: 0 no button, 1 a button in the middle of the bar, 2 at its
// left (top) end, 3 at its right (bottom) end. ResizeLock: 0 the bar can be
// dragged, any other value holds it. Collapsed hides the bottom/right widget
// (the second after SwapControls) and gives the first all the room; the bar
// cannot be dragged while a side is collapsed.
class Splitter : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(bool SwapControls READ SwapControls WRITE setSwapControls)
    Q_PROPERTY(int ControlTopLeftMin READ ControlTopLeftMin WRITE setControlTopLeftMin)
    Q_PROPERTY(int ControlBottomRightMin READ ControlBottomRightMin WRITE setControlBottomRightMin)
    Q_PROPERTY(int SplitterOrientation READ SplitterOrientation WRITE setSplitterOrientation)
    Q_PROPERTY(int SplitterPosition READ SplitterPosition WRITE setSplitterPosition)
    Q_PROPERTY(int SplitterSize READ SplitterSize WRITE setSplitterSize)
    Q_PROPERTY(int ResizeButton READ ResizeButton WRITE setResizeButton)
    Q_PROPERTY(bool Collapsed READ Collapsed WRITE setCollapsed)
    Q_PROPERTY(int ResizeLock READ ResizeLock WRITE setResizeLock)

public:
    enum Orientation { SideBySide = 0, OneAboveTheOther = 1 };
    enum ButtonPlace { NoButton = 0, ButtonMiddle = 1, ButtonStart = 2, ButtonEnd = 3 };

    explicit Splitter(QWidget *parent = nullptr);

    // The two widgets, top/left first; they become children of the splitter.
    void setControls(QWidget *first, QWidget *second);
    QWidget *control(int index) const;

    bool SwapControls() const { return mSwapControls; }
    void setSwapControls(bool New_SwapControls);
    int ControlTopLeftMin() const { return mControlTopLeftMin; }
    void setControlTopLeftMin(int New_ControlTopLeftMin);
    int ControlBottomRightMin() const { return mControlBottomRightMin; }
    void setControlBottomRightMin(int New_ControlBottomRightMin);
    int SplitterOrientation() const { return mSplitterOrientation; }
    void setSplitterOrientation(int New_SplitterOrientation);
    int SplitterPosition() const { return mSplitterPosition; }
    void setSplitterPosition(int New_SplitterPosition);
    int SplitterSize() const { return mSplitterSize; }
    void setSplitterSize(int New_SplitterSize);
    int ResizeButton() const { return mResizeButton; }
    void setResizeButton(int New_ResizeButton);
    bool Collapsed() const { return mCollapsed; }
    void setCollapsed(bool New_Collapsed);
    int ResizeLock() const { return mResizeLock; }
    void setResizeLock(int New_ResizeLock);

    void InitProperties();
    void ReadProperties(const QVariantMap &bag);
    void WriteProperties(QVariantMap &bag) const;
    void ReadProperties(QSettings &settings);
    void WriteProperties(QSettings &settings) const;

    // A colour value, maybe naming a system colour, as 0x00BBGGRR; 0 when it
    // names no colour.
    quint32 SystemColorToRGBColor(quint32 Color) const;

    QWidget *lblPointer() const;
    QWidget *pctButton() const;
    // The bar's place as shown, in twips: SplitterPosition kept within the
    // minimum sizes of the two sides (the top/left minimum wins when both do
    // not fit).
    int shownPosition() const;
    // Places the bar, the button and the widgets.
    void Arrange();

signals:
    // The bar is being dragged (after each re-arrangement).
    void Resize();
    // The bar was released.
    void EndResize();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    friend class SplitterBar;
    friend class SplitterButton;
    void barPressed(QPoint local);
    void barMoved(QPoint local);
    void barReleased();
    void buttonReleased(QPoint local);
    bool sideBySide() const { return mSplitterOrientation != OneAboveTheOther; }
    int lengthTwips() const;
    int toPixels(int twips) const;
    int toTwips(int pixels) const;
    void placeButton(int barStart, int barThickness, int length);
    QList<QWidget *> orderedControls() const;

    bool mSwapControls = false;
    int mControlTopLeftMin = 500;
    int mControlBottomRightMin = 500;
    int mSplitterOrientation = SideBySide;
    int mSplitterPosition = 0;
    int mSplitterSize = 75;
    int mResizeButton = NoButton;
    bool mCollapsed = false;
    int mResizeLock = 0;

    SplitterBar *mBar;
    SplitterButton *mButton;
    QPointer<QWidget> mFirst;
    QPointer<QWidget> mSecond;
    QPoint mPressOffset;
    bool mDragging = false;
};
