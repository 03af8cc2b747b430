// SPDX-License-Identifier: MIT
#include "SkinCodec.h"

#include "HostCodePage.h"

#include <array>

namespace {

#include "CodePageTables.inc"

constexpr int kUtf8 = 65001;

struct CodePage
{
    int number;             // Windows' number for it
    const char *name;       // IANA name, as lists spell it
    const char *title;
    const char *scripts;
    const char16_t *upperHalf; // bytes 0x80-0xFF; null for a multi-byte code page
    const char *aliases;    // further names, blank-separated, lower case
};

// The order a menu offers them in.
constexpr std::array<CodePage, 23> kPages { {
    { 1250, "windows-1250", "Windows-1250", "Central European", kWindows1250, "cp1250 1250 win1250 x-cp1250" },
    { 1251, "windows-1251", "Windows-1251", "Cyrillic", kWindows1251, "cp1251 1251 win1251 x-cp1251" },
    { 1252, "windows-1252", "Windows-1252", "Western European", kWindows1252, "cp1252 1252 win1252 x-cp1252" },
    { 1253, "windows-1253", "Windows-1253", "Greek", kWindows1253, "cp1253 1253 win1253 x-cp1253" },
    { 1254, "windows-1254", "Windows-1254", "Turkish", kWindows1254, "cp1254 1254 win1254 x-cp1254" },
    { 1255, "windows-1255", "Windows-1255", "Hebrew", kWindows1255, "cp1255 1255 win1255 x-cp1255" },
    { 1256, "windows-1256", "Windows-1256", "Arabic", kWindows1256, "cp1256 1256 win1256 x-cp1256" },
    { 1257, "windows-1257", "Windows-1257", "Baltic", kWindows1257, "cp1257 1257 win1257 x-cp1257" },
    { 1258, "windows-1258", "Windows-1258", "Vietnamese", kWindows1258, "cp1258 1258 win1258 x-cp1258" },
    { 28591, "iso-8859-1", "ISO-8859-1", "Western European", kIso8859_1,
      "iso8859-1 iso_8859-1 iso8859_1 latin1 latin-1 l1 cp819 ibm819 28591" },
    { 28592, "iso-8859-2", "ISO-8859-2", "Central European", kIso8859_2,
      "iso8859-2 iso_8859-2 iso8859_2 latin2 latin-2 l2 28592" },
    { 28595, "iso-8859-5", "ISO-8859-5", "Cyrillic", kIso8859_5, "iso8859-5 iso_8859-5 iso8859_5 cyrillic 28595" },
    { 28597, "iso-8859-7", "ISO-8859-7", "Greek", kIso8859_7, "iso8859-7 iso_8859-7 iso8859_7 greek greek8 28597" },
    { 28599, "iso-8859-9", "ISO-8859-9", "Turkish", kIso8859_9,
      "iso8859-9 iso_8859-9 iso8859_9 latin5 latin-5 l5 28599" },
    { 28605, "iso-8859-15", "ISO-8859-15", "Western European", kIso8859_15,
      "iso8859-15 iso_8859-15 iso8859_15 latin9 latin-9 l9 28605" },
    { 20866, "koi8-r", "KOI8-R", "Russian", kKoi8R, "koi8r koi8_r cp20866 20866" },
    { 21866, "koi8-u", "KOI8-U", "Ukrainian", kKoi8U, "koi8u koi8_u cp21866 21866" },
    { 866, "ibm866", "IBM866", "Cyrillic, DOS", kIbm866, "cp866 866 ibm-866 csibm866" },
    { kUtf8, "utf-8", "UTF-8", "Unicode", nullptr, "utf8 cp65001 65001" },
    { 932, "shift_jis", "Shift_JIS", "Japanese", nullptr, "cp932 932 windows-31j sjis shift-jis ms_kanji" },
    { 936, "gbk", "GBK", "Simplified Chinese", nullptr, "cp936 936 windows-936 gb2312" },
    { 949, "euc-kr", "EUC-KR", "Korean", nullptr, "cp949 949 windows-949 uhc ks_c_5601-1987" },
    { 950, "big5", "Big5", "Traditional Chinese", nullptr, "cp950 950 windows-950 big5-hkscs" },
} };

const CodePage &pageAt(int index)
{
    return kPages.at(std::size_t(index));
}

// The names the host's converter may know the code page by.
QStringList hostNames(const CodePage &page)
{
    QStringList names { QStringLiteral("windows-%1").arg(page.number), QLatin1String(page.name),
                        QStringLiteral("cp%1").arg(page.number) };
    return names;
}

bool isUsable(const CodePage &page)
{
    return page.upperHalf || page.number == kUtf8 || HostCodePage::canConvert(page.number, hostNames(page));
}

bool answersTo(const CodePage &page, const QString &lowered)
{
    if (lowered == QLatin1String(page.name))
        return true;
    const QByteArrayView aliases(page.aliases);
    qsizetype begin = 0;
    while (begin < aliases.size()) {
        qsizetype end = aliases.indexOf(' ', begin);
        if (end < 0)
            end = aliases.size();
        if (QLatin1String(aliases.data() + begin, end - begin) == lowered)
            return true;
        begin = end + 1;
    }
    return false;
}

int indexOfNumber(int number)
{
    for (int i = 0; i < int(kPages.size()); ++i) {
        if (kPages[std::size_t(i)].number == number)
            return i;
    }
    return -1;
}

// What an undefined byte reads as: the C1 control of its number for 0x80-0x9F
// (as Windows reads them), a private-use character above.
char16_t undefinedCharacter(int byte)
{
    return byte < 0xA0 ? char16_t(byte) : char16_t(0xF700 + byte);
}

char16_t characterOf(const char16_t *upperHalf, unsigned char byte)
{
    if (byte < 0x80)
        return byte;
    const char16_t mapped = upperHalf[byte - 0x80];
    return mapped ? mapped : undefinedCharacter(byte);
}

// The byte of `c`, or -1.
int byteOf(const char16_t *upperHalf, char16_t c)
{
    if (c < 0x80)
        return c;
    for (int i = 0; i < 128; ++i) {
        if (upperHalf[i] == c)
            return 0x80 + i;
    }
    for (int i = 0; i < 128; ++i) {
        if (upperHalf[i] == 0 && undefinedCharacter(0x80 + i) == c)
            return 0x80 + i;
    }
    return -1;
}

// One character as written: a surrogate pair is one character.
qsizetype characterLength(QStringView text, qsizetype at)
{
    return text.at(at).isHighSurrogate() && at + 1 < text.size() && text.at(at + 1).isLowSurrogate() ? 2 : 1;
}

} // namespace

SkinCodec::SkinCodec()
    : mPage(indexOfNumber(1252))
{
}

std::optional<SkinCodec> SkinCodec::named(QStringView name)
{
    const QString lowered = name.trimmed().toString().toLower();
    for (int i = 0; i < int(kPages.size()); ++i) {
        if (answersTo(pageAt(i), lowered))
            return isUsable(pageAt(i)) ? std::optional<SkinCodec>(SkinCodec(i)) : std::nullopt;
    }
    return std::nullopt;
}

QString SkinCodec::whyUnavailable(QStringView name)
{
    const QString lowered = name.trimmed().toString().toLower();
    for (const CodePage &page : kPages) {
        if (!answersTo(page, lowered))
            continue;
        if (isUsable(page))
            return {};
        return QStringLiteral("\u201c%1\u201d is %2 (%3), which this system cannot convert")
            .arg(name.toString(), QLatin1String(page.title), QLatin1String(page.scripts));
    }
    return QStringLiteral("\u201c%1\u201d is no code page").arg(name.toString());
}

SkinCodec SkinCodec::hostDefault()
{
    // A system code page the skins cannot be in (a Thai or a Vietnamese DOS
    // one, say) gives the Western one, as on other hosts.
    const int index = indexOfNumber(HostCodePage::ansiCodePage());
    if (index < 0 || !isUsable(pageAt(index)))
        return SkinCodec();
    return SkinCodec(index);
}

QStringList SkinCodec::availableNames()
{
    QStringList names;
    for (const CodePage &page : kPages) {
        if (isUsable(page))
            names << QLatin1String(page.name);
    }
    return names;
}

QString SkinCodec::name() const
{
    return QLatin1String(pageAt(mPage).name);
}

QString SkinCodec::title() const
{
    return QLatin1String(pageAt(mPage).title);
}

QString SkinCodec::description() const
{
    return QStringLiteral("%1 (%2)").arg(title(), QLatin1String(pageAt(mPage).scripts));
}

bool SkinCodec::isSingleByte() const
{
    return pageAt(mPage).upperHalf != nullptr;
}

QString SkinCodec::toText(QByteArrayView bytes) const
{
    const CodePage &page = pageAt(mPage);
    if (page.upperHalf) {
        QString text(bytes.size(), Qt::Uninitialized);
        QChar *out = text.data();
        for (char c : bytes)
            *out++ = QChar(characterOf(page.upperHalf, static_cast<unsigned char>(c)));
        return text;
    }
    if (page.number == kUtf8)
        return QString::fromUtf8(bytes.data(), bytes.size());
    // Only code pages the host converts are ever made.
    return HostCodePage::decode(page.number, hostNames(page), bytes).value_or(QString());
}

std::optional<QByteArray> SkinCodec::toBytes(QStringView text) const
{
    const CodePage &page = pageAt(mPage);
    if (page.upperHalf) {
        QByteArray bytes(text.size(), Qt::Uninitialized);
        char *out = bytes.data();
        for (QChar c : text) {
            const int byte = byteOf(page.upperHalf, c.unicode());
            if (byte < 0)
                return std::nullopt;
            *out++ = char(byte);
        }
        return bytes;
    }
    if (page.number == kUtf8) {
        // A lone surrogate has no UTF-8 spelling.
        for (qsizetype i = 0; i < text.size(); i += characterLength(text, i)) {
            if (text.at(i).isSurrogate() && characterLength(text, i) == 1)
                return std::nullopt;
        }
        return text.toUtf8();
    }
    return HostCodePage::encode(page.number, hostNames(page), text);
}

QString SkinCodec::refusal(QStringView text) const
{
    if (toBytes(text))
        return {};
    QStringView refused = text;
    for (qsizetype i = 0; i < text.size(); i += characterLength(text, i)) {
        const QStringView character = text.mid(i, characterLength(text, i));
        if (!toBytes(character)) {
            refused = character;
            break;
        }
    }
    return QStringLiteral("\u201c%1\u201d cannot be written in %2, the code page of this skin")
        .arg(refused.toString(), title());
}

QString SkinCodec::wordText(QByteArrayView bytes)
{
    return QString::fromLatin1(bytes.data(), bytes.size());
}

QByteArray SkinCodec::wordBytes(QStringView text)
{
    return text.toLatin1();
}

QChar SkinCodec::firstNonAscii(QStringView text)
{
    for (const QChar c : text) {
        if (c.unicode() >= 0x80)
            return c;
    }
    return {};
}
