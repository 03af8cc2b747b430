#include "EditorStartup.h"

#include "NodeKey.h"
#include "ObjectTreeModel.h"
#include "clsElement.h"
#include "frmEditor.h"

#include <QApplication>
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
    Options options;
    for (int i = 1; i < arguments.size(); ++i) {
        const QString &a = arguments.at(i);
        auto value = [&](QString &into) {
            if (i + 1 >= arguments.size()) {
                error = a + QStringLiteral(" wants a value");
                return;
            }
            into = arguments.at(++i);
        };
        if (a == QLatin1String("--skin-dir")) {
            value(options.skinDirectory);
            options.hasSkinDirectory = true;
        } else if (a == QLatin1String("--screenshot")) {
            value(options.screenshot);
        } else if (a.startsWith(QLatin1String("--"))) {
            error = QStringLiteral("unknown option ") + a;
        } else if (options.target.isEmpty()) {
            options.target = a;
        } else {
            error = QStringLiteral("only one file or folder can be opened");
        }
        if (!error.isEmpty())
            break;
    }
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
