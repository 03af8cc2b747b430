// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <optional>

// The one place where a skin's bytes become text and text becomes a skin's
// bytes. A skin's .ui files are 8-bit text in the code page of the Windows
// system they were made on; the codec reads and writes one such code page.
//
// Single-byte code pages carry their own tables (the same result on every
// host, whatever converter the host's Qt has). Every byte of them reads as one
// character and that character writes back as the same byte, including the
// bytes a code page leaves undefined: those read as U+0080-U+009F (as Windows
// reads them) or as a private-use character U+F7xx, so a value holding one
// survives an edit of its other characters. The double-byte code pages go
// through the host's converter and exist only where the host has them.
class SkinCodec
{
public:
    // Windows-1252, the code page of skins made on a Western European system.
    SkinCodec();

    // The code page of that name: an IANA name ("windows-1251", "utf-8",
    // "iso-8859-5", "koi8-r", "ibm866"...) or a common alias ("cp1251",
    // "cp866", "latin1", "1251"...), in any case. Empty when the name is not a
    // code page or the host cannot convert it.
    static std::optional<SkinCodec> named(QStringView name);
    // Why named(name) gives nothing: the name is no code page ("“x” is no code
    // page"), or it is one this host's converter lacks, such as a double-byte
    // one where Qt is built without ICU ("“cp932” is Shift_JIS (Japanese), which
    // this system cannot convert"). Empty when it gives one.
    static QString whyUnavailable(QStringView name);
    // The code page a skin is in when nobody chose one: the host system's rule
    // (Windows' ANSI code page on Windows; Windows-1252 elsewhere).
    static SkinCodec hostDefault();
    // The IANA names of every code page this host can use, in the order a menu
    // offers them.
    static QStringList availableNames();

    // The IANA name, in the spelling the lists use: "windows-1251".
    QString name() const;
    // The name people know it by: "Windows-1251".
    QString title() const;
    // The title with the scripts it is for: "Windows-1251 (Cyrillic)".
    QString description() const;
    bool isSingleByte() const;

    // The text `bytes` stand for.
    QString toText(QByteArrayView bytes) const;
    // The bytes that write `text`, or nothing when a character of it has no
    // byte in this code page (see refusal()).
    std::optional<QByteArray> toBytes(QStringView text) const;
    // Why `text` cannot be written ("“Ж” cannot be written in Windows-1252,
    // the code page of this skin"), or empty when it can.
    QString refusal(QStringView text) const;

    // Names, keys and node keys hold ASCII only (the reader reads no other
    // letter into them), the same in every code page. These keep any byte as
    // the character of that number and back, so even a stray one survives.
    static QString wordText(QByteArrayView bytes);
    static QByteArray wordBytes(QStringView text);
    // Whether `text` is ASCII only; the first character that is not, else null.
    static QChar firstNonAscii(QStringView text);

    bool operator==(const SkinCodec &other) const { return mPage == other.mPage; }
    bool operator!=(const SkinCodec &other) const { return mPage != other.mPage; }

private:
    explicit SkinCodec(int page) : mPage(page) { }
    int mPage;
};
