// SPDX-License-Identifier: MIT
#pragma once

#include "EditorEnvironment.h"
#include "Problem.h"

#include <QObject>
#include <QVector>

class DocumentActions;
class ShownNode;
class SkinDocument;
class SkinOpener;
class StatusProgress;
class QWidget;

// File > Port Skin...: the open skin's folders made for another screen, with
// the port's progress in the status bar; its report, its notes and what the
// status bar says go out as signals for the window to show.
class PortSkinFlow : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        SkinDocument &skin;
        DocumentActions &actions;
        SkinOpener &opener;
        StatusProgress &progress;
        ShownNode &shown;
    };

    // `window` is the parent of the port's form.
    PortSkinFlow(const EditorEnvironment &environment, const Parts &parts, QWidget &window);

    // Asks for the formats, ports, reports, and offers to open the ported skin.
    void run();

signals:
    void told(const QString &statusText);
    void reported(const QString &reportText);
    // The port's notes, sent after the ported skin was opened (an opening
    // forgets the notes of the skin it replaces).
    void notesFound(const QVector<Problem> &notes);

private:
    bool mayPort(const QString &target, bool &replace) const;
    void offerToOpen(const QString &ported, const QString &format) const;

    EditorEnvironment mEnv;
    Parts mParts;
    QWidget &mWindow;
};
