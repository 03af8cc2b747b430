// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QMap>
#include <QSize>
#include <QString>

#include <vector>

class clsKorviInterface;
struct PortReport;

// How the numbers of a skin change when it moves to another screen.
struct PortScale
{
    double sx = 1;
    double sy = 1;
    // Added to the own x and y of objects that stand directly in a layer or
    // state (a screen fitted with one factor is centred).
    int offsetX = 0;
    int offsetY = 0;
    enum class Fonts { Scale, Keep, Map };
    Fonts fonts = Fonts::Scale;
    // With Fonts::Map: old size -> new size.
    QMap<qint64, qint64> fontMap;
    QByteArray fromFormat;
    QByteArray toFormat;
};

// Rewrites, in a document read from one file, the values the renderer reads
// as positions and sizes, and every value that names the old format. Only the
// values change: the document is then saved with Save Changes, so the file
// keeps every other byte.
namespace PortNumbers {

// round(v * s), halves going up, so that rounding commutes with whole shifts.
qint64 scaled(qint64 value, double factor);
// An edge-true size: round((start + size) * s) - round(start * s). Objects that
// touched still touch.
qint64 scaledSize(qint64 start, qint64 size, double factor);
// "-12", "480": an optional minus and digits only.
bool isPlainNumber(QByteArrayView value, qint64 *number = nullptr);
// Alignment words with an offset ("center+5", "right-3"): the offset scaled,
// the word and sign kept. False when the value holds no such offset.
bool scaleAlignOffset(const QByteArray &value, double factor, QByteArray &out);
// The value with every occurrence of `from` that stands alone (no digit on
// either side) replaced by `to`; `count` is raised by how many.
QByteArray replaceFormat(const QByteArray &value, const QByteArray &from, const QByteArray &to, int &count);
// A font size table: lines "OLD NEW" or "OLD=NEW"; "#" starts a comment.
// False with `error` set on a line that is neither.
bool parseFontMap(const QByteArray &text, QMap<qint64, qint64> &map, QString &error);

// Scales every template, font type and block of the document (header
// variables only have the format rewritten), noting in the report what was
// left alone and why; `file` names the file in the notes.
void portDocument(clsKorviInterface &document, const PortScale &scale, const QString &file, PortReport &report);

// The boxes of the objects standing directly in layers and states that give
// their own x, y, w and h as plain numbers, by node key, layer by layer.
struct ScreenBox
{
    QByteArray nodeKey;
    qint64 x, y, w, h;
};
std::vector<std::vector<ScreenBox>> screenBoxes(const clsKorviInterface &document);
// Notes the objects that end up off the new screen though they were on the
// old one, and those that overlap after the port but did not before.
void noteBoxChanges(const std::vector<std::vector<ScreenBox>> &before, const std::vector<std::vector<ScreenBox>> &after,
                    QSize oldScreen, QSize newScreen, const QString &file, PortReport &report);

} // namespace PortNumbers
