// SPDX-License-Identifier: MIT
#include "PortReport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

QString sizeText(QSize size)
{
    return QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
}

QString noteLine(const PortReport::Note &note, const SkinCodec &codec)
{
    QString place = note.file;
    if (!note.nodeKey.isEmpty())
        place += QLatin1Char(' ') + SkinCodec::wordText(note.nodeKey);
    if (!note.key.isEmpty())
        place += QLatin1Char(' ') + SkinCodec::wordText(note.key) + QLatin1Char('=') + codec.toText(note.value);
    return QStringLiteral("%1: %2 [%3]").arg(place, note.message, note.kind);
}

} // namespace

int PortReport::count(const QString &kind) const
{
    int n = 0;
    for (const Note &note : notes)
        n += note.kind == kind ? 1 : 0;
    return n;
}

QString PortReport::text() const
{
    QString out;
    for (const Note &note : notes)
        out += noteLine(note, codec) + QLatin1Char('\n');
    for (const Picture &picture : pictures) {
        QString frames;
        if (picture.frames > 1)
            frames = QStringLiteral(" (%1 frames)").arg(picture.frames);
        out += QStringLiteral("%1: %2 -> %3%4 [resized]\n")
                   .arg(picture.file, sizeText(picture.from), sizeText(picture.to), frames);
    }
    out += QStringLiteral("%1 -> %2 (x %3, y %4): %5 values scaled, %6 format names rewritten, %7 pictures resized, "
                          "%8 notes%9\n")
               .arg(fromFormat, toFormat)
               .arg(sx)
               .arg(sy)
               .arg(valuesScaled)
               .arg(formatStringsRewritten)
               .arg(pictures.size())
               .arg(notes.size())
               .arg(dryRun ? QStringLiteral("; nothing written (dry run)") : QString());
    return out;
}

QByteArray PortReport::json() const
{
    QJsonArray noteList;
    for (const Note &note : notes) {
        noteList.append(QJsonObject { { QStringLiteral("kind"), note.kind },
                                      { QStringLiteral("file"), note.file },
                                      { QStringLiteral("node_key"), SkinCodec::wordText(note.nodeKey) },
                                      { QStringLiteral("key"), SkinCodec::wordText(note.key) },
                                      { QStringLiteral("value"), codec.toText(note.value) },
                                      { QStringLiteral("message"), note.message } });
    }
    QJsonArray pictureList;
    for (const Picture &picture : pictures) {
        pictureList.append(QJsonObject { { QStringLiteral("file"), picture.file },
                                         { QStringLiteral("kind"), picture.kind },
                                         { QStringLiteral("from"), QJsonArray { picture.from.width(), picture.from.height() } },
                                         { QStringLiteral("to"), QJsonArray { picture.to.width(), picture.to.height() } },
                                         { QStringLiteral("frames"), picture.frames } });
    }
    const QJsonObject root { { QStringLiteral("from"), fromFormat },
                             { QStringLiteral("to"), toFormat },
                             { QStringLiteral("sx"), sx },
                             { QStringLiteral("sy"), sy },
                             { QStringLiteral("aspect"), aspect },
                             { QStringLiteral("fonts"), fonts },
                             { QStringLiteral("dry_run"), dryRun },
                             { QStringLiteral("targets"), QJsonArray::fromStringList(targets) },
                             { QStringLiteral("files"), QJsonArray::fromStringList(files) },
                             { QStringLiteral("values_scaled"), valuesScaled },
                             { QStringLiteral("format_names_rewritten"), formatStringsRewritten },
                             { QStringLiteral("notes"), noteList },
                             { QStringLiteral("pictures"), pictureList } };
    return QJsonDocument(root).toJson(QJsonDocument::Indented);
}
