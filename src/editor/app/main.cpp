// SPDX-License-Identifier: MIT
// korvi-editor: the skin editor's window.
//
//   korvi-editor [--skin-dir DIR] [--screenshot OUT.png] [FILE.ui | FOLDER]
//   korvi-editor --help | --version
//
// A file is opened as the Open command opens it, a folder as the Dir command;
// --skin-dir sets the default skin directory for this run; --screenshot opens,
// shows the first layer, writes a picture of the window and ends.
#include "ApplicationInfo.h"
#include "EditorEnvironment.h"
#include "EditorStartup.h"
#include "QtDialogs.h"
#include "SettingsFile.h"
#include "SkinContext.h"
#include "WebLink.h"
#include "clsKorviInterface.h"
#include "frmEditor.h"

#include <QApplication>
#include <QTextStream>

int main(int argc, char *argv[])
{
    // --help and --version open no window, so they need no display either,
    // unless a platform is chosen.
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    if (EditorStartup::asksOnlyForText(arguments) && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");

    QApplication app(argc, argv);
    QApplication::setApplicationName(ApplicationInfo::programName());
    QApplication::setApplicationVersion(ApplicationInfo::version());
    QApplication::setOrganizationName(QStringLiteral("Korvi8"));

    QString error;
    const EditorStartup::Options options = EditorStartup::parse(app.arguments(), error);
    if (!error.isEmpty()) {
        QTextStream(stderr) << error << '\n' << EditorStartup::usage() << '\n';
        return 2;
    }
    if (!options.message.isEmpty()) {
        QTextStream(stdout) << options.message;
        return 0;
    }

    clsKorviInterface document;
    SkinContext context;
    QtDialogs dialogs;
    const SettingsFile settings = SettingsFile::forApplication();
    WebLink web(dialogs);
    frmEditor window({ document, context, dialogs, settings, web });
    return EditorStartup::run(window, options);
}
