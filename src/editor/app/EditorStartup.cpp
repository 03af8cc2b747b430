// SPDX-License-Identifier: MIT
#include "EditorStartup.h"

#include "ApplicationInfo.h"
#include "NodeKey.h"
#include "ObjectTreeModel.h"
#include "clsElement.h"
#include "frmEditor.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QTextStream>
#include <QTreeView>

namespace EditorStartup {

namespace {

// The command line korvi-editor understands. Qt's parser also takes
// "--skin-dir=DIR", and lists the options for --help.
class StartupParser
{
public:
    StartupParser()
        : help(parser.addHelpOption())
        , version(parser.addVersionOption())
    {
        parser.setApplicationDescription(ApplicationInfo::title());
        parser.addOption(skinDirectory);
        parser.addOption(screenshot);
        parser.addPositionalArgument(QStringLiteral("target"),
                                     QStringLiteral("A .ui file to open, or a folder to open whole."),
                                     QStringLiteral("[FILE.ui | FOLDER]"));
    }

    QCommandLineParser parser;
    const QCommandLineOption help;
    const QCommandLineOption version;
    const QCommandLineOption skinDirectory {
        QStringLiteral("skin-dir"), QStringLiteral("The default skin directory for this run."),
        QStringLiteral("DIR")
    };
    const QCommandLineOption screenshot {
        QStringLiteral("screenshot"),
        QStringLiteral("Open, show the first layer, write a picture of the window and end."),
        QStringLiteral("OUT.png")
    };
};

} // namespace

QString usage()
{
    return StartupParser().parser.helpText();
}

QString versionLine()
{
    return ApplicationInfo::programName() + QLatin1Char(' ') + ApplicationInfo::version();
}

Options parse(const QStringList &arguments, QString &error)
{
    Options options;
    StartupParser p;
    if (!p.parser.parse(arguments)) {
        error = p.parser.errorText();
        return options;
    }
    // Only Qt's parser knows the text of --help-all (its own options too): it
    // prints it and ends the program, as in every Qt program.
    if (p.parser.isSet(QStringLiteral("help-all")))
        p.parser.process(arguments);
    if (p.parser.isSet(p.help)) {
        options.message = p.parser.helpText();
        return options;
    }
    if (p.parser.isSet(p.version)) {
        options.message = versionLine() + QLatin1Char('\n');
        return options;
    }
    options.hasSkinDirectory = p.parser.isSet(p.skinDirectory);
    options.skinDirectory = p.parser.value(p.skinDirectory);
    options.screenshot = p.parser.value(p.screenshot);
    const QStringList targets = p.parser.positionalArguments();
    if (targets.size() > 1)
        error = QStringLiteral("only one file or folder can be opened");
    else if (!targets.isEmpty())
        options.target = targets.first();
    return options;
}

bool asksOnlyForText(const QStringList &arguments)
{
    StartupParser p;
    p.parser.parse(arguments); // Qt's own options are unknown here: that is no error
    return p.parser.isSet(p.help) || p.parser.isSet(QStringLiteral("help-all")) || p.parser.isSet(p.version);
}

void openTarget(frmEditor &window, const QString &target)
{
    if (target.isEmpty())
        return;
    if (QFileInfo(target).isDir())
        window.openSkinFolder(target);
    else
        window.openSkinFile(target);
}

bool selectFirstLayer(frmEditor &window)
{
    ObjectTreeModel *tree = window.objectTree();
    for (int row = 0; row < tree->rowCount(); ++row) {
        const QModelIndex node = tree->index(row, 0);
        const NodeTarget target = tree->resolve(node);
        if (NodeKey::letterOf(tree->nodeKey(node)) == 'L' && target.element && target.element->IsLayer()) {
            window.selectNode(node);
            if (auto *view = window.findChild<QTreeView *>(QStringLiteral("tvwObjects")))
                view->expand(node);
            return true;
        }
    }
    return false;
}

bool writeScreenshot(frmEditor &window, const QString &path)
{
    window.show();
    QApplication::processEvents();
    return window.grab().save(path);
}

int run(frmEditor &window, const Options &options)
{
    if (options.hasSkinDirectory)
        window.setRunSkinDirectory(options.skinDirectory);
    openTarget(window, options.target);
    if (!options.screenshot.isEmpty()) {
        selectFirstLayer(window);
        const bool written = writeScreenshot(window, options.screenshot);
        window.close();
        if (!written) {
            QTextStream(stderr) << "cannot write " << options.screenshot << '\n';
            return 1;
        }
        return 0;
    }
    window.show();
    return QApplication::exec();
}

} // namespace EditorStartup
