#include "EditorStartup.h"

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

QString usage()
{
    return QStringLiteral("usage: korvi-editor [--skin-dir DIR] [--screenshot OUT.png] [FILE.ui | FOLDER]");
}

Options parse(const QStringList &arguments, QString &error)
{
    QCommandLineParser parser;
    const QCommandLineOption skinDir(QStringLiteral("skin-dir"),
                                     QStringLiteral("The default skin directory for this run."),
                                     QStringLiteral("DIR"));
    const QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                        QStringLiteral("Write a picture of the window and end."),
                                        QStringLiteral("OUT.png"));
    const QCommandLineOption help({ QStringLiteral("h"), QStringLiteral("help") },
                                  QStringLiteral("Print the usage and end."));
    parser.addOptions({ skinDir, screenshot, help });
    Options options;
    if (!parser.parse(arguments)) {
        error = parser.errorText();
        return options;
    }
    options.help = parser.isSet(help);
    options.hasSkinDirectory = parser.isSet(skinDir);
    options.skinDirectory = parser.value(skinDir);
    options.screenshot = parser.value(screenshot);
    const QStringList targets = parser.positionalArguments();
    if (targets.size() > 1)
        error = QStringLiteral("only one file or folder can be opened");
    else if (!targets.isEmpty())
        options.target = targets.first();
    return options;
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
    if (options.help) {
        QTextStream(stdout) << usage() << '\n';
        return 0;
    }
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
