// SPDX-License-Identifier: MIT
#include "PortNumbers.h"

#include "PortReport.h"
#include "SkinElementWalk.h"
#include "clsElement.h"
#include "clsKorviInterface.h"
#include "clsProperties.h"
#include "clsProperty.h"

#include <algorithm>
#include <cmath>

namespace {

enum class Axis { None, X, Y };

// What a key holds, as the renderer reads it.
enum class Kind { Other, Position, Size, Cell, Padding, Align, FontSize };

struct KeyRule
{
    const char *key;
    Kind kind;
    Axis axis;
};

constexpr KeyRule kRules[] = {
    { "x", Kind::Position, Axis::X },         { "y", Kind::Position, Axis::Y },
    { "w", Kind::Size, Axis::X },             { "h", Kind::Size, Axis::Y },
    { "cellw", Kind::Cell, Axis::X },         { "cellh", Kind::Cell, Axis::Y },
    { "padding", Kind::Padding, Axis::X },    { "paddingleft", Kind::Padding, Axis::X },
    { "paddingright", Kind::Padding, Axis::X }, { "align", Kind::Align, Axis::X },
    { "bmpalign", Kind::Align, Axis::X },     { "iconalign", Kind::Align, Axis::X },
    { "valign", Kind::Align, Axis::Y },       { "bmpvalign", Kind::Align, Axis::Y },
    { "iconvalign", Kind::Align, Axis::Y },   { "fontsize", Kind::FontSize, Axis::None },
};

const KeyRule *ruleFor(QByteArrayView key)
{
    for (const KeyRule &rule : kRules) {
        if (key == rule.key)
            return &rule;
    }
    return nullptr;
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

QByteArray number(qint64 value)
{
    return QByteArray::number(value);
}

// The element's own first value of a key as a plain number; 0 when it has
// none or it is no plain number (the start of its box for edge rounding).
qint64 ownStart(const clsProperties &properties, QByteArrayView key)
{
    const int index = properties.indexOf(key);
    qint64 start = 0;
    if (index >= 0 && PortNumbers::isPlainNumber(properties.valueAt(index), &start))
        return start;
    return 0;
}

class DocumentPort
{
public:
    DocumentPort(const PortScale &scale, const QString &file, PortReport &report)
        : mScale(scale)
        , mFile(file)
        , mReport(report)
    {
    }

    void element(clsElement &element, const QByteArray &nodeKey, const clsElement *parent, bool header)
    {
        clsProperties &properties = element.Properties();
        const bool onScreen = parent && (parent->IsLayer() || parent->IsState());
        // Edge rounding needs the box's own start as it was read.
        const qint64 startX = ownStart(properties, "x");
        const qint64 startY = ownStart(properties, "y");
        for (int i = 0; i < properties.Count(); ++i) {
            const QByteArray key = clsProperty::idKeyOf(properties.keyAt(i));
            const QByteArray value = properties.valueAt(i).toByteArray();
            if (key == "ScriptLine") {
                if (!mScale.fromFormat.isEmpty() && value.contains(mScale.fromFormat))
                    note(QStringLiteral("script-kept"), nodeKey, key, value,
                         QStringLiteral("a script line names the old format; scripts are left as they are"));
                continue;
            }
            QByteArray next = value;
            if (!mScale.fromFormat.isEmpty())
                next = PortNumbers::replaceFormat(value, mScale.fromFormat, mScale.toFormat, mReport.formatStringsRewritten);
            const KeyRule *rule = header ? nullptr : ruleFor(key);
            if (rule && next == value)
                next = scaledValue(*rule, value, startX, startY, onScreen, nodeKey, key);
            if (next != value)
                properties.setValueAt(i, next);
        }
    }

private:
    double factor(Axis axis) const
    {
        return axis == Axis::Y ? mScale.sy : mScale.sx;
    }

    void note(const QString &kind, const QByteArray &nodeKey, const QByteArray &key, const QByteArray &value,
              const QString &message)
    {
        mReport.note(kind, mFile, nodeKey, key, value, message);
    }

    QByteArray scaledValue(const KeyRule &rule, const QByteArray &value, qint64 startX, qint64 startY, bool onScreen,
                           const QByteArray &nodeKey, const QByteArray &key)
    {
        if (rule.kind == Kind::Align) {
            QByteArray out;
            if (!PortNumbers::scaleAlignOffset(value, factor(rule.axis), out))
                return value;
            ++mReport.valuesScaled;
            return out;
        }
        qint64 n = 0;
        if (!PortNumbers::isPlainNumber(value, &n)) {
            note(QStringLiteral("value-kept"), nodeKey, key, value, QStringLiteral("not a plain number; left as it is"));
            return value;
        }
        if (rule.kind == Kind::FontSize)
            return fontSize(n, value, nodeKey, key);
        ++mReport.valuesScaled;
        const double f = factor(rule.axis);
        switch (rule.kind) {
        case Kind::Position: {
            const qint64 shift = onScreen ? (rule.axis == Axis::Y ? mScale.offsetY : mScale.offsetX) : 0;
            return number(PortNumbers::scaled(n, f) + shift);
        }
        case Kind::Size:
            return number(PortNumbers::scaledSize(rule.axis == Axis::Y ? startY : startX, n, f));
        default:
            return number(PortNumbers::scaled(n, f));
        }
    }

    QByteArray fontSize(qint64 size, const QByteArray &value, const QByteArray &nodeKey, const QByteArray &key)
    {
        switch (mScale.fonts) {
        case PortScale::Fonts::Keep:
            return value;
        case PortScale::Fonts::Map: {
            const auto found = mScale.fontMap.constFind(size);
            if (found == mScale.fontMap.constEnd()) {
                note(QStringLiteral("font-kept"), nodeKey, key, value, QStringLiteral("size not in the font map; kept"));
                return value;
            }
            ++mReport.valuesScaled;
            note(QStringLiteral("font-mapped"), nodeKey, key, value,
                 QStringLiteral("mapped to %1").arg(found.value()));
            return number(found.value());
        }
        case PortScale::Fonts::Scale:
            break;
        }
        ++mReport.valuesScaled;
        const qint64 scaledSize = PortNumbers::scaled(size, qMin(mScale.sx, mScale.sy));
        // A size below 2 is drawn at 8 points: a size that was at least 2
        // stays at least 2.
        if (size >= 2 && scaledSize < 2) {
            note(QStringLiteral("font-clamped"), nodeKey, key, value,
                 QStringLiteral("scaled to %1, clamped to 2").arg(scaledSize));
            return number(2);
        }
        return number(scaledSize);
    }

    const PortScale &mScale;
    QString mFile;
    PortReport &mReport;
};

} // namespace

namespace PortNumbers {

qint64 scaled(qint64 value, double factor)
{
    return qint64(std::floor(double(value) * factor + 0.5));
}

qint64 scaledSize(qint64 start, qint64 size, double factor)
{
    return scaled(start + size, factor) - scaled(start, factor);
}

bool isPlainNumber(QByteArrayView value, qint64 *number)
{
    qsizetype i = value.startsWith('-') ? 1 : 0;
    if (i == value.size() || value.size() - i > 15)
        return false;
    for (qsizetype k = i; k < value.size(); ++k) {
        if (!isDigit(value.at(k)))
            return false;
    }
    if (number)
        *number = value.toByteArray().toLongLong();
    return true;
}

bool scaleAlignOffset(const QByteArray &value, double factor, QByteArray &out)
{
    qsizetype sign = -1;
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (value.at(i) == '+' || value.at(i) == '-') {
            sign = i;
            break;
        }
    }
    if (sign <= 0)
        return false;
    for (qsizetype i = 0; i < sign; ++i) {
        const char c = value.at(i);
        if (!((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z')))
            return false;
    }
    const QByteArray digits = value.mid(sign + 1);
    qint64 offset = 0;
    if (digits.startsWith('-') || !isPlainNumber(digits, &offset))
        return false;
    // The offset is scaled with its sign, so that "-3" and "+3" round alike
    // to the same edges as positions do; the sign written stays.
    const qint64 signedOffset = value.at(sign) == '-' ? -offset : offset;
    const qint64 result = scaled(signedOffset, factor);
    out = value.left(sign + 1) + QByteArray::number(qAbs(result));
    return true;
}

QByteArray replaceFormat(const QByteArray &value, const QByteArray &from, const QByteArray &to, int &count)
{
    if (from.isEmpty() || !value.contains(from))
        return value;
    QByteArray out;
    qsizetype at = 0;
    while (true) {
        const qsizetype found = value.indexOf(from, at);
        if (found < 0)
            break;
        const qsizetype end = found + from.size();
        const bool alone = (found == 0 || !isDigit(value.at(found - 1))) && (end == value.size() || !isDigit(value.at(end)));
        out += value.mid(at, found - at);
        if (alone) {
            out += to;
            ++count;
        } else {
            out += from;
        }
        at = end;
    }
    out += value.mid(at);
    return out;
}

bool parseFontMap(const QByteArray &text, QMap<qint64, qint64> &map, QString &error)
{
    const QList<QByteArray> lines = text.split('\n');
    for (int i = 0; i < lines.size(); ++i) {
        QByteArray line = lines.at(i);
        const qsizetype hash = line.indexOf('#');
        if (hash >= 0)
            line.truncate(hash);
        line = line.replace('=', ' ').simplified();
        if (line.isEmpty())
            continue;
        const QList<QByteArray> words = line.split(' ');
        qint64 from = 0;
        qint64 to = 0;
        if (words.size() != 2 || !isPlainNumber(words.at(0), &from) || !isPlainNumber(words.at(1), &to)) {
            error = QStringLiteral("line %1 is not \"OLD NEW\": %2").arg(i + 1).arg(QString::fromLocal8Bit(lines.at(i).trimmed()));
            return false;
        }
        map.insert(from, to);
    }
    return true;
}

void portDocument(clsKorviInterface &document, const PortScale &scale, const QString &file, PortReport &report)
{
    // The walk hands out the elements read-only; the document itself is ours
    // to change, so they are changed through it.
    struct Item
    {
        clsElement *element;
        QByteArray nodeKey;
        const clsElement *parent;
    };
    std::vector<Item> items;
    SkinElementWalk::forEach(document, [&](const SkinElementWalk::Visit &visit) {
        items.push_back({ const_cast<clsElement *>(&visit.element), visit.nodeKey, visit.parent });
    });
    std::vector<const clsElement *> headers;
    for (clsElement *header : document.Headers())
        headers.push_back(header);
    DocumentPort port(scale, file, report);
    for (const Item &item : items) {
        const bool header = std::find(headers.begin(), headers.end(), item.element) != headers.end();
        port.element(*item.element, item.nodeKey, item.parent, header);
    }
}

std::vector<std::vector<ScreenBox>> screenBoxes(const clsKorviInterface &document)
{
    std::vector<std::vector<ScreenBox>> layers;
    const clsElement *block = nullptr;
    SkinElementWalk::forEach(document, [&](const SkinElementWalk::Visit &visit) {
        if (!visit.parent || !(visit.parent->IsLayer() || visit.parent->IsState()))
            return;
        if (visit.parent != block) {
            block = visit.parent;
            layers.emplace_back();
        }
        const clsProperties &properties = visit.element.Properties();
        qint64 v[4] = {};
        const char *keys[4] = { "x", "y", "w", "h" };
        for (int i = 0; i < 4; ++i) {
            const int index = properties.indexOf(keys[i]);
            if (index < 0 || !isPlainNumber(properties.valueAt(index), &v[i]))
                return;
        }
        if (v[2] > 0 && v[3] > 0)
            layers.back().push_back({ visit.nodeKey, v[0], v[1], v[2], v[3] });
    });
    return layers;
}

namespace {

bool overlap(const ScreenBox &a, const ScreenBox &b)
{
    return a.x < b.x + b.w && b.x < a.x + a.w && a.y < b.y + b.h && b.y < a.y + a.h;
}

bool onScreen(const ScreenBox &box, QSize screen)
{
    return box.x < screen.width() && box.y < screen.height() && box.x + box.w > 0 && box.y + box.h > 0;
}

} // namespace

void noteBoxChanges(const std::vector<std::vector<ScreenBox>> &before, const std::vector<std::vector<ScreenBox>> &after,
                    QSize oldScreen, QSize newScreen, const QString &file, PortReport &report)
{
    if (before.size() != after.size())
        return;
    for (size_t l = 0; l < before.size(); ++l) {
        const auto &old = before[l];
        const auto &now = after[l];
        if (old.size() != now.size())
            continue;
        for (size_t i = 0; i < now.size(); ++i) {
            if (onScreen(old[i], oldScreen) && !onScreen(now[i], newScreen))
                report.note(QStringLiteral("off-screen"), file, now[i].nodeKey, {}, {},
                            QStringLiteral("off the new screen at %1,%2").arg(now[i].x).arg(now[i].y));
            for (size_t k = i + 1; k < now.size(); ++k) {
                if (overlap(now[i], now[k]) && !overlap(old[i], old[k]))
                    report.note(QStringLiteral("overlap"), file, now[i].nodeKey, {}, {},
                                QStringLiteral("now overlaps %1").arg(SkinCodec::wordText(now[k].nodeKey)));
            }
        }
    }
}

} // namespace PortNumbers
