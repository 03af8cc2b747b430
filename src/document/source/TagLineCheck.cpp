// SPDX-License-Identifier: MIT
#include "TagLineCheck.h"

#include "AsciiCase.h"
#include "KeyIndex.h"
#include "UiFileReader.h"
#include "UiLineScanner.h"
#include "clsElement.h"

#include <cstring>

namespace {

// The lines after the first, for a quoted value that runs on.
class FollowingLines : public UiLineScanner::LineSource
{
public:
    FollowingLines(const QByteArray &bytes, qsizetype next) : mBytes(bytes), mNext(next) { }

    bool takeNextLine(QByteArray &line) override
    {
        if (mPastLastLine)
            return false;
        if (mNext >= mBytes.size()) {
            mPastLastLine = true;
            line = QByteArray();
            return true;
        }
        const UiFileReader::LineSpan span = UiFileReader::lineAt(mBytes, mNext, mNext);
        line = QByteArray(mBytes.constData() + span.offset, span.length) + '\r';
        return true;
    }

private:
    const QByteArray &mBytes;
    qsizetype mNext;
    bool mPastLastLine = false;
};

bool sameWordIgnoringCase(QByteArrayView a, QByteArrayView b)
{
    if (a.size() != b.size())
        return false;
    for (qsizetype i = 0; i < a.size(); ++i) {
        if (AsciiCase::lower(a[i]) != AsciiCase::lower(b[i]))
            return false;
    }
    return true;
}

} // namespace

bool TagLineCheck::sameAsRead(const QByteArray &bytes, qsizetype lineBegin, const clsElement &element)
{
    if (lineBegin >= bytes.size())
        return false;
    qsizetype next = 0;
    const UiFileReader::LineSpan span = UiFileReader::lineAt(bytes, lineBegin, next);
    // A line ended by CR LF is read where it stands, as the reader does.
    const qsizetype crAt = span.offset + span.length;
    const char *line = bytes.constData() + span.offset;
    if (!(crAt + 2 + UiCharRuns::kSlack <= bytes.size() && bytes.at(crAt) == '\r' && bytes.at(crAt + 1) == '\n')) {
        mLine.reserve(span.length + 1 + UiCharRuns::kSlack);
        mLine.resize(span.length + 1);
        memcpy(mLine.data(), line, size_t(span.length));
        mLine[span.length] = '\r';
        line = mLine.constData();
    }
    FollowingLines more(bytes, next);
    UiLineScanner scanner(line, span.length + 1, mGrown, &more);
    // As the reader reads a tag line (UiFileReader::readTag).
    scanner.position = scanner.NextTokenStart(1);
    if (scanner.position == 0)
        scanner.position = 1;
    if (scanner.atEnd() || scanner.current() != '<')
        return false;
    scanner.position += 1;
    const QByteArrayView word = scanner.ReadName();
    if (!sameWordIgnoringCase(word, element.ElementType()))
        return false;
    scanner.position += 1;
    const bool isVar = sameWordIgnoringCase(word, "var");
    if (!isVar) {
        QByteArrayView name = scanner.ReadName();
        if (name.endsWith('/'))
            name.chop(1);
        if (name != element.strName())
            return false;
    }
    mPack.clear();
    if (scanner.position > 0) {
        if (isVar)
            scanner.position -= 1;
        scanner.position += 1;
        scanner.ReadAttributes(mPack, [] {});
    }
    const clsProperties &props = element.Properties();
    if (props.Count() != mPack.count())
        return false;
    for (int i = 0; i < props.Count(); ++i) {
        if (props.valueAt(i) != mPack.valueAt(i)
            || !KeyIndex::sameKey(clsProperty::idKeyView(props.keyAt(i)), mPack.keyAt(i)))
            return false;
    }
    return true;
}
