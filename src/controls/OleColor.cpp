// SPDX-License-Identifier: MIT
#include "OleColor.h"

namespace {

// The system colour indexes and the palette roles that play their part.
std::optional<QPalette::ColorRole> roleOf(quint32 index)
{
    switch (index) {
    case 0: return QPalette::Window;           // scroll bar
    case 1: return QPalette::Window;           // desktop
    case 4: return QPalette::Window;           // menu
    case 5: return QPalette::Base;             // window background
    case 6: return QPalette::Shadow;           // window frame
    case 7: return QPalette::WindowText;       // menu text
    case 8: return QPalette::Text;             // window text
    case 0x0D: return QPalette::Highlight;
    case 0x0E: return QPalette::HighlightedText;
    case 0x0F: return QPalette::Button;        // button face
    case 0x10: return QPalette::Mid;           // button shadow
    case 0x11: return QPalette::PlaceholderText; // grey text
    case 0x12: return QPalette::ButtonText;
    case 0x14: return QPalette::Light;         // button highlight
    case 0x15: return QPalette::Dark;          // dark 3-D shadow
    case 0x16: return QPalette::Midlight;      // light 3-D
    case 0x17: return QPalette::ToolTipText;
    case 0x18: return QPalette::ToolTipBase;
    default: return std::nullopt;
    }
}

} // namespace

std::optional<QColor> OleColor::translate(quint32 value, const QPalette &palette)
{
    if (value & SystemBit) {
        const auto role = roleOf(value & 0x00FFFFFFu);
        if (!role || (value & 0x7F000000u))
            return std::nullopt;
        return palette.color(QPalette::Active, *role);
    }
    if (value > 0x00FFFFFFu)
        return std::nullopt;
    return QColor(int(value & 0xFF), int((value >> 8) & 0xFF), int((value >> 16) & 0xFF));
}

QColor OleColor::toColor(quint32 value, const QPalette &palette)
{
    return translate(value, palette).value_or(QColor(Qt::black));
}

quint32 OleColor::toRgb(quint32 value, const QPalette &palette)
{
    const auto color = translate(value, palette);
    return color ? fromColor(*color) : 0u;
}

quint32 OleColor::fromColor(const QColor &color)
{
    return quint32(color.red()) | (quint32(color.green()) << 8) | (quint32(color.blue()) << 16);
}
