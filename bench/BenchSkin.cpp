// SPDX-License-Identifier: MIT
#include "BenchSkin.h"

#include <QRandomGenerator>
#include <algorithm>
#include <iterator>
#include <numeric>

namespace {

const char *const kTypes[] = { "TEXT", "BUTTON", "CHECKBOX", "SPRITE", "LIST", "SLIDER", "INPUTTEXT", "PUSHBUTTON" };
const char *const kKeys[] = { "x", "y", "z", "w", "h", "bmp", "font", "fontsize", "align", "valign",
                              "padding", "template", "fonttype", "text", "visible", "color", "sprind" };

QByteArray attribute(QRandomGenerator &rng, int k)
{
    const QByteArray key = kKeys[k];
    if (key == "visible")
        return " VISIBLE";
    if (key == "text")
        return " text=\"Label " + QByteArray::number(rng.bounded(1000)) + "\"";
    if (key == "bmp")
        return " bmp=icons/button_" + QByteArray::number(rng.bounded(300)) + ".bmp#" + QByteArray::number(rng.bounded(4) + 1);
    if (key == "template")
        return " template=tmpButton" + QByteArray::number(rng.bounded(40));
    if (key == "align")
        return " align=CENTER+" + QByteArray::number(rng.bounded(10));
    if (key == "color")
        return " color=#" + QByteArray::number(rng.bounded(0x1000000), 16).rightJustified(6, '0');
    return " " + key + "=" + QByteArray::number(rng.bounded(800));
}

} // namespace

namespace BenchSkin {

QByteArray generate(qsizetype targetBytes)
{
    QRandomGenerator rng(42);
    QByteArray text;
    text.reserve(targetBytes + 4096);
    text += "<header>\r\n\t<VAR  version=2 skin=\"Bench\">\r\n</header>\r\n\r\n";
    for (int t = 0; t < 40; ++t)
        text += "<TEMPLATE tmpButton" + QByteArray::number(t) + " bmp=btn" + QByteArray::number(t)
            + ".bmp fontsize=14 fonttype=fntMain align=CENTER valign=CENTER>\r\n";
    text += "<FONTTYPE fntMain font=Tahoma fontsize=16 color=#FFFFFF bold>\r\n\r\n";
    int layer = 0;
    while (text.size() < targetBytes) {
        text += "<LAYER ui_Screen" + QByteArray::number(layer++) + " x=0 y=0 w=800 h=480>\r\n";
        const int objects = 20 + rng.bounded(40);
        for (int o = 0; o < objects; ++o) {
            text += "\t<" + QByteArray(kTypes[rng.bounded(8)]) + " obj" + QByteArray::number(o);
            // Distinct keys, as skins mostly have; one object in twenty repeats one.
            const int attributes = 5 + rng.bounded(11);
            int order[std::size(kKeys)];
            std::iota(std::begin(order), std::end(order), 0);
            std::shuffle(std::begin(order), std::end(order), rng);
            for (int a = 0; a < attributes; ++a)
                text += attribute(rng, order[a]);
            if (rng.bounded(20) == 0)
                text += attribute(rng, order[0]);
            text += ">\r\n";
        }
        if (layer % 5 == 0) {
            text += "\t<SCRIPT onShow" + QByteArray::number(layer) + ">\r\n";
            for (int l = 0; l < 8; ++l)
                text += "\t\tif x > " + QByteArray::number(l) + " then call show(\"ui_Main\", 1)\r\n";
            text += "\t</SCRIPT>\r\n";
        }
        text += "\t<USELAYER ui_Status/>\r\n</LAYER>\r\n\r\n";
    }
    return text;
}

const QByteArray &largeSkin()
{
    // KORVI_BENCH_MB sets another size, e.g. for a quick look under a profiler.
    static const QByteArray text = generate(qEnvironmentVariableIntValue("KORVI_BENCH_MB") > 0
                                                    ? qEnvironmentVariableIntValue("KORVI_BENCH_MB") * 1024 * 1024
                                                    : 50 * 1024 * 1024);
    return text;
}

} // namespace BenchSkin
