// SPDX-License-Identifier: MIT
#pragma once

#include "SkinReadError.h"
#include "UiFileReader.h"
#include "clsKorviInterface.h"

#include <QDir>
#include <QFile>
#include <QtTest>

// The generated skin corpus, as the document tests read it.
namespace CorpusCases {

// One data row "caseNNNNN" per corpus skin, with its path without ".ui".
inline void addCorpusRows()
{
    const QString data = QStringLiteral(KORVI_TEST_DATA "/ui");
    QTest::addColumn<QString>("base");
    for (const QString &name : QDir(data).entryList({ "case?????.ui" }, QDir::Files, QDir::Name))
        QTest::newRow(qPrintable(name.chopped(3))) << data + '/' + name.chopped(3);
}

// Reads a corpus case as korvi dump does: its imported file, if any, then the
// file. Returns the reading error's line, 0 when there was none.
inline qint64 readCorpusCase(clsKorviInterface &doc, const QString &base)
{
    try {
        if (QFile::exists(base + ".imported.ui"))
            ReadUiFile(doc, base + ".imported.ui", true);
        ReadUiFile(doc, base + ".ui", false);
    } catch (const SkinReadError &error) {
        return error.line();
    }
    return 0;
}

} // namespace CorpusCases
