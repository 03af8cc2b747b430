// SPDX-License-Identifier: MIT
#pragma once

#include "NameTable.h"
#include "PropertyPack.h"
#include "UiFileReader.h"
#include "UiLineScanner.h"

#include <QByteArray>
#include <QString>
#include <array>

class SkinSourceFile;
class clsElement;
class clsElements;

// The reader's work: reads one file's bytes line by line into a document,
// recording where each element stands in them.
class UiFileParser : private UiLineScanner::LineSource
{
public:
    // What a tag word does when read.
    enum class TagKind { Header, HeaderEnd, Var, Block, BlockEnd, Script, ScriptEnd, Template, FontType, Child };

    UiFileParser(clsKorviInterface &document, bool imported);
    // It points into itself (the last name read).
    Q_DISABLE_COPY_MOVE(UiFileParser)

    // Reads file content already in memory; `fileName` names it in errors.
    void readBytes(const QByteArray &bytes, const QString &fileName);

    using LineSpan = UiFileReader::LineSpan;
    static LineSpan lineAt(const QByteArray &bytes, qsizetype start, qsizetype &next);

private:
    bool takeNextLine(QByteArray &line) override;
    QByteArrayView nextLine();
    void loadNextLine(QByteArray &line);
    void copyLine(LineSpan span, QByteArray &line) const;
    void readLine(QByteArrayView line);
    void readScriptLine(QByteArrayView line);
    void readTag(UiLineScanner &scanner);
    struct TagWord
    {
        QByteArray spelling;
        QByteArray type;
        TagKind kind;
    };
    const TagWord &tagWordOf(QByteArrayView word);
    static size_t tagWordSlot(QByteArrayView word);
    void placeTagWord(qsizetype index);
    clsElements *openElement(const TagWord &tag);
    void placeElement(const TagWord &tag, clsElement *element);
    void readAttributes(UiLineScanner &scanner, bool isVar, bool makesElement);
    clsElement *receiver(const char *what) const;
    void recordElement(const TagWord &tag, clsElement *element);
    void recordMoreLine(clsElement *element);
    void recordClosingLine(const clsElement *element);
    [[noreturn]] void fail(const QString &message) const;

    clsKorviInterface &mDocument;
    bool mImported;

    QByteArray mBytes;
    QString mFileName;
    // Where the next line of the file begins, and whether the empty line after
    // the last one has been taken.
    qsizetype mNextLineStart = 0;
    bool mPastLastLine = false;
    // 0-based number of the line being read.
    qsizetype mLineIndex = 0;
    // Where the line being read begins in the file (a line grown by a quoted
    // value: where it began).
    qsizetype mLineStart = 0;
    // Where the elements read stand in the file, kept by the document; none
    // for a file too large to be addressed.
    SkinSourceFile *mSource = nullptr;
    int mSourceNumber = 0;
    // The element whose script block is open, which its closing tag closes.
    const clsElement *mOpenScript = nullptr;
    // A line copied out of the file, or grown by a quoted value.
    QByteArray mLine;
    // A script line without its tabs and carriage returns.
    QByteArray mScriptText;

    bool mInHeader = false;
    bool mInScript = false;
    clsElement *mCurrentBlock = nullptr;
    clsElement *mCurrentElement = nullptr;
    // The name of the last tag that had one, as the name table keeps it: it
    // is used before the next name is looked up, and needs no copy.
    const QByteArray *mLastName = &mNoName;
    const QByteArray mNoName;
    NameTable mNames;
    // Tag words met so far, and a hash table of their positions, at most a
    // quarter full.
    QVector<TagWord> mTagWords;
    static constexpr qsizetype kMostTagWords = 64;
    static constexpr quint8 kNoTagWord = 255;
    std::array<quint8, 256> mTagWordTable = makeEmptyTagWordTable();
    static constexpr std::array<quint8, 256> makeEmptyTagWordTable()
    {
        std::array<quint8, 256> table {};
        for (quint8 &entry : table)
            entry = kNoTagWord;
        return table;
    }

    // The attributes of the tag line being read, gathered before they are stored.
    PropertyPack mAttributes;
    PropertyPack mNumberingRoom;
};
