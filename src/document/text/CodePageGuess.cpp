// SPDX-License-Identifier: MIT
#include "CodePageGuess.h"

#include <QChar>
#include <QString>

namespace {

// Enough words to judge by; a skin holds a few hundred at most.
constexpr int kMostWords = 2000;

bool isAsciiLetterOrDigit(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

// The runs of letter bytes (ASCII letters and digits, and any byte beyond
// ASCII) that hold at least one byte beyond ASCII.
QList<QByteArrayView> wordsBeyondAscii(const QList<QByteArrayView> &files)
{
    QList<QByteArrayView> words;
    for (QByteArrayView bytes : files) {
        qsizetype begin = -1;
        bool beyond = false;
        for (qsizetype i = 0; i <= bytes.size() && words.size() < kMostWords; ++i) {
            const bool part = i < bytes.size()
                && (isAsciiLetterOrDigit(bytes[i]) || static_cast<unsigned char>(bytes[i]) >= 0x80);
            if (part) {
                if (begin < 0)
                    begin = i;
                beyond = beyond || static_cast<unsigned char>(bytes[i]) >= 0x80;
                continue;
            }
            if (begin >= 0 && beyond)
                words << bytes.sliced(begin, i - begin);
            begin = -1;
            beyond = false;
        }
    }
    return words;
}

// Valid UTF-8 with at least one sequence of more than one byte.
bool looksLikeUtf8(const QList<QByteArrayView> &files)
{
    bool multiByte = false;
    for (QByteArrayView bytes : files) {
        if (!bytes.isValidUtf8())
            return false;
        for (char c : bytes)
            multiByte = multiByte || static_cast<unsigned char>(c) >= 0x80;
    }
    return multiByte;
}

// Whether `word` decoded in `codec` reads as a word: letters only, those
// beyond ASCII all of the code page's own script, no capital after a small
// letter, and, for a Latin script, no more letters beyond ASCII than within.
bool readsAsWord(const SkinCodec &codec, QChar::Script script, QByteArrayView word)
{
    const QString text = codec.toText(word);
    int beyond = 0;
    bool small = false;
    for (const QChar c : text) {
        if (!c.isLetterOrNumber())
            return false;
        if (c.isUpper() && small)
            return false;
        small = small || c.isLower();
        if (c.unicode() < 0x80)
            continue;
        ++beyond;
        if (c.script() != script)
            return false;
    }
    return script != QChar::Script_Latin || beyond * 2 <= text.size();
}

struct Candidate
{
    const char16_t *name;
    QChar::Script script;
    // The script's most frequent small letters beyond ASCII: a tie between
    // two code pages of about as many words goes to the one whose letters
    // are the usual ones.
    const char16_t *frequent;
};

const Candidate kCandidates[] = {
    { u"windows-1252", QChar::Script_Latin, u"éèàäöüßçñáíóúê" },
    { u"windows-1250", QChar::Script_Latin, u"ąęćłńśźżčřšžěů" },
    { u"windows-1251", QChar::Script_Cyrillic, u"оеаинтсрвлкмдп" },
    { u"windows-1253", QChar::Script_Greek, u"αοιετσνηυρπκμλ" },
};

// How many letters beyond ASCII of the words are among `frequent`.
int frequentLetters(const SkinCodec &codec, const char16_t *frequent, const QList<QByteArrayView> &words)
{
    const QString usual = QString::fromUtf16(frequent);
    int count = 0;
    for (QByteArrayView word : words) {
        for (const QChar c : codec.toText(word))
            count += c.unicode() >= 0x80 && usual.contains(c) ? 1 : 0;
    }
    return count;
}

// The script of the words `codec` is judged by; Latin for a code page that
// is not a candidate.
QChar::Script scriptOf(const SkinCodec &codec)
{
    for (const Candidate &c : kCandidates) {
        if (SkinCodec::named(QStringView(c.name)) == codec)
            return c.script;
    }
    return QChar::Script_Latin;
}

int wordsRead(const SkinCodec &codec, QChar::Script script, const QList<QByteArrayView> &words)
{
    int count = 0;
    for (QByteArrayView word : words)
        count += readsAsWord(codec, script, word) ? 1 : 0;
    return count;
}

} // namespace

namespace CodePageGuess {

std::optional<SkinCodec> better(const QList<QByteArrayView> &files, const SkinCodec &current)
{
    const std::optional<SkinCodec> utf8 = SkinCodec::named(u"utf-8");
    if (looksLikeUtf8(files))
        return current == *utf8 ? std::nullopt : utf8;
    const QList<QByteArrayView> words = wordsBeyondAscii(files);
    if (words.isEmpty() || !current.isSingleByte())
        return std::nullopt;
    // Offered only when most words read right in the other code page and
    // fewer than half in this one.
    const int half = int(words.size() + 1) / 2;
    const int readHere = wordsRead(current, scriptOf(current), words);
    if (readHere >= half)
        return std::nullopt;
    std::optional<SkinCodec> best;
    int bestRead = readHere;
    int bestUsual = -1;
    for (const Candidate &c : kCandidates) {
        const SkinCodec codec = *SkinCodec::named(QStringView(c.name));
        if (codec == current)
            continue;
        const int read = wordsRead(codec, c.script, words);
        if (read < half || read < bestRead)
            continue;
        const int usual = frequentLetters(codec, c.frequent, words);
        if (read > bestRead || usual > bestUsual) {
            best = codec;
            bestRead = read;
            bestUsual = usual;
        }
    }
    return best;
}

} // namespace CodePageGuess
