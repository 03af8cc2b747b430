// SPDX-License-Identifier: MIT
#include "Splitter.h"

#include "OleColor.h"
#include "PropertyBag.h"
#include "SplitterBar.h"
#include "SplitterButton.h"
#include "Twips.h"

#include <QCursor>

Splitter::Splitter(QWidget *parent)
    : QWidget(parent)
    , mBar(new SplitterBar(this))
    , mButton(new SplitterButton(this))
{
    Arrange();
}

void Splitter::setControls(QWidget *first, QWidget *second)
{
    mFirst = first;
    mSecond = second;
    for (QWidget *w : { first, second })
        if (w && w->parentWidget() != this)
            w->setParent(this);
    for (QWidget *w : { first, second })
        if (w)
            w->show();
    Arrange();
}

QWidget *Splitter::control(int index) const
{
    return index == 0 ? mFirst.data() : index == 1 ? mSecond.data() : nullptr;
}

void Splitter::setSwapControls(bool v) { mSwapControls = v; Arrange(); }
void Splitter::setControlTopLeftMin(int v) { mControlTopLeftMin = v; Arrange(); }
void Splitter::setControlBottomRightMin(int v) { mControlBottomRightMin = v; Arrange(); }
void Splitter::setSplitterOrientation(int v) { mSplitterOrientation = v; Arrange(); }
void Splitter::setSplitterPosition(int v) { mSplitterPosition = v; Arrange(); }
void Splitter::setSplitterSize(int v) { mSplitterSize = v; Arrange(); }
void Splitter::setResizeButton(int v) { mResizeButton = v; Arrange(); }
void Splitter::setCollapsed(bool v) { mCollapsed = v; Arrange(); }
void Splitter::setResizeLock(int v) { mResizeLock = v; Arrange(); }

void Splitter::InitProperties()
{
    mSwapControls = false;
    mControlTopLeftMin = 500;
    mControlBottomRightMin = 500;
    mSplitterOrientation = SideBySide;
    mSplitterPosition = 0;
    mSplitterSize = 75;
    mResizeButton = NoButton;
    mCollapsed = false;
    mResizeLock = 0;
    Arrange();
}

void Splitter::ReadProperties(const QVariantMap &bag)
{
    InitProperties();
    PropertyBag::read(*this, bag);
}

void Splitter::WriteProperties(QVariantMap &bag) const
{
    PropertyBag::write(*this, bag);
}

void Splitter::ReadProperties(QSettings &settings)
{
    InitProperties();
    PropertyBag::read(*this, settings);
}

void Splitter::WriteProperties(QSettings &settings) const
{
    PropertyBag::write(*this, settings);
}

quint32 Splitter::SystemColorToRGBColor(quint32 Color) const
{
    return OleColor::toRgb(Color, palette());
}

QWidget *Splitter::lblPointer() const
{
    return mBar;
}

QWidget *Splitter::pctButton() const
{
    return mButton;
}

int Splitter::toPixels(int twips) const
{
    return sideBySide() ? Twips::toPixelsX(twips, this) : Twips::toPixelsY(twips, this);
}

int Splitter::toTwips(int pixels) const
{
    return sideBySide() ? Twips::fromPixelsX(pixels, this) : Twips::fromPixelsY(pixels, this);
}

int Splitter::lengthTwips() const
{
    return toTwips(sideBySide() ? width() : height());
}

int Splitter::shownPosition() const
{
    const int highest = lengthTwips() - mSplitterSize - mControlBottomRightMin;
    return std::max(mControlTopLeftMin, std::min(mSplitterPosition, highest));
}

QList<QWidget *> Splitter::orderedControls() const
{
    QList<QWidget *> list { mFirst.data(), mSecond.data() };
    if (mSwapControls)
        std::swap(list[0], list[1]);
    return list;
}

// Both widgets and the bar as rectangles along the splitter's axis.
void Splitter::Arrange()
{
    const int length = sideBySide() ? width() : height();
    const int across = sideBySide() ? height() : width();
    const int thickness = toPixels(mSplitterSize);
    const int barStart = mCollapsed ? std::max(0, length - thickness) : toPixels(shownPosition());
    const auto place = [this, across](QWidget *w, int start, int size) {
        if (!w)
            return;
        const QRect r = sideBySide() ? QRect(start, 0, std::max(0, size), across)
                                     : QRect(0, start, across, std::max(0, size));
        w->setGeometry(r);
    };
    const QList<QWidget *> controls = orderedControls();
    place(controls[0], 0, barStart);
    if (controls[0])
        controls[0]->setVisible(true);
    if (controls[1]) {
        controls[1]->setVisible(!mCollapsed);
        place(controls[1], barStart + thickness, length - barStart - thickness);
    }
    place(mBar, barStart, thickness);
    mBar->setCursor(mResizeLock || mCollapsed
                        ? Qt::ArrowCursor
                        : (sideBySide() ? Qt::SplitHCursor : Qt::SplitVCursor));
    mBar->raise();
    placeButton(barStart, thickness, length);
}

void Splitter::placeButton(int barStart, int barThickness, int length)
{
    mButton->setVisible(mResizeButton != NoButton);
    if (mResizeButton == NoButton)
        return;
    const int span = std::min(length, std::max(4 * barThickness, 24));
    int along = (length - span) / 2;
    if (mResizeButton == ButtonStart)
        along = 0;
    else if (mResizeButton == ButtonEnd)
        along = length - span;
    mButton->setGeometry(sideBySide() ? QRect(barStart, along, barThickness, span)
                                      : QRect(along, barStart, span, barThickness));
    mButton->raise();
}

void Splitter::resizeEvent(QResizeEvent *)
{
    Arrange();
}

void Splitter::barPressed(QPoint local)
{
    mPressOffset = local;
    mDragging = true;
}

void Splitter::barMoved(QPoint local)
{
    if (!mDragging || mResizeLock != 0 || mCollapsed)
        return;
    const QPoint inSplitter = mBar->mapTo(this, local) - mPressOffset;
    mSplitterPosition = toTwips(sideBySide() ? inSplitter.x() : inSplitter.y());
    mSplitterPosition = shownPosition();
    Arrange();
    emit Resize();
}

void Splitter::barReleased()
{
    mDragging = false;
    emit EndResize();
}

void Splitter::buttonReleased(QPoint local)
{
    if (!mButton->rect().contains(local))
        return;
    mCollapsed = !mCollapsed;
    Arrange();
}
