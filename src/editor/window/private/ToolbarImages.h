// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>
#include <QMap>
#include <QString>

// The pictures of the toolbar buttons, by button key, with two for the Lock
// button: "LockOff" (frame shown, objects can be dragged) and "LockOn".
class ToolbarImages
{
public:
    ToolbarImages();

    QIcon image(const QString &key) const { return mImages.value(key); }
    int count() const { return mImages.size(); }

private:
    QMap<QString, QIcon> mImages;
};
