// SPDX-License-Identifier: MIT
#pragma once

// A main window with scripted dialogs and a settings folder of its own, and the
// small skins the window tests open.

#include "TestFiles.h"
#include "CanvasController.h"
#include "DocumentActions.h"
#include "EditorEnvironment.h"
#include "MovableShape.h"
#include "ObjectTreeModel.h"
#include "PowGrid.h"
#include "ScriptedDialogs.h"
#include "SettingsFile.h"
#include "SkinCanvas.h"
#include "SkinContext.h"
#include "SkinDocument.h"
#include "Splitter.h"
#include "WebLink.h"
#include "clsKorviInterface.h"
#include "frmEditor.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QToolBar>
#include <QTreeView>
#include <QtTest>

#include <memory>

struct EditorFixture
{
    QTemporaryDir programFolder;
    QTemporaryDir configFolder;
    clsKorviInterface document;
    SkinContext context;
    ScriptedDialogs dialogs;
    SettingsFile settings{ programFolder.path(), configFolder.path() };
    WebLink web{ dialogs };
    std::unique_ptr<frmEditor> window;

    // The window's size: the same on every screen, or as a first start
    // chooses it for the screen.
    enum class Size { Fixed, ChosenOnAFirstStart };

    explicit EditorFixture(Size size = Size::Fixed)
    {
        restart();
        if (size == Size::Fixed) {
            window->setWindowState(Qt::WindowNoState);
            window->resize(1300, 860);
        }
    }

    // A new window on the same settings, as at the program's next start.
    void restart()
    {
        window = std::make_unique<frmEditor>(EditorEnvironment{ document, context, dialogs, settings, web });
    }

    // The window's controls and controllers, found by their object names.
    template<class T>
    T *control(const char *name) const
    {
        T *found = window->findChild<T *>(QString::fromLatin1(name));
        if (!found)
            qFatal("the window has no %s", name);
        return found;
    }
    QToolBar *tlbMain() const { return control<QToolBar>("tlbMain"); }
    QTreeView *tvwObjects() const { return control<QTreeView>("tvwObjects"); }
    SkinCanvas *pctTemplate() const { return control<SkinCanvas>("pctTemplate"); }
    MovableShape *mshObject() const { return control<MovableShape>("mshObject"); }
    PowGrid *pgrProperty() const { return control<PowGrid>("pgrProperty"); }
    QPlainTextEdit *txtInfo() const { return control<QPlainTextEdit>("txtInfo"); }
    Splitter *splMain() const { return control<Splitter>("splMain"); }
    Splitter *splInfo() const { return control<Splitter>("splInfo"); }
    QMenu *mnuProperty() const { return control<QMenu>("mnuProperty"); }
    QMenu *mnuLayer() const { return control<QMenu>("mnuLayer"); }
    QMenu *mnuElement() const { return control<QMenu>("mnuElement"); }
    QMenu *mnuAddObject() const { return control<QMenu>("mnuAddObject"); }
    DocumentActions *actions() const { return control<DocumentActions>("DocumentActions"); }
    CanvasController *canvas() const { return control<CanvasController>("CanvasController"); }

    // The window's title as the user reads it, without the place Qt keeps for
    // the modified marker.
    QString title() const { return window->windowTitle().remove(QStringLiteral("[*]")); }

    // The grid lists an object's own properties alone: its box for inherited
    // values (ticked on a first start) is unticked with the space bar.
    void hideInheritedValues()
    {
        QCheckBox *box = control<QCheckBox>("chkInherited");
        if (box->isChecked())
            QTest::keyClick(box, Qt::Key_Space);
        QVERIFY(!box->isChecked());
    }

    ObjectTreeModel &tree() { return *window->objectTree(); }

    // The value of the property a node key names; "(none)" when it names none.
    QByteArray value(const QByteArray &propertyNodeKey)
    {
        const NodeTarget target = tree().ResolveNodeKey(propertyNodeKey);
        return target.property.isNull() ? QByteArray("(none)") : target.property.value();
    }
    QUndoStack &stack() { return window->skinDocument().undoStack(); }

    // The tree node of `key`, unfolded down to it and scrolled into view.
    QModelIndex node(const QByteArray &key)
    {
        const QModelIndex index = tree().indexOfKey(key);
        for (QModelIndex up = index.parent(); up.isValid(); up = up.parent())
            tvwObjects()->expand(up);
        tvwObjects()->scrollTo(index);
        return index;
    }

    // A click of the left button on the tree node of `key`, which the tree
    // takes the focus with, as a user picks a node.
    void clickNode(const QByteArray &key)
    {
        const QPoint at = tvwObjects()->visualRect(node(key)).center();
        QTest::mouseClick(tvwObjects()->viewport(), Qt::LeftButton, Qt::NoModifier, at);
        QCOMPARE(window->skinDocument().currentKey(), key);
    }

    // A press of the left button at a canvas pixel, through the zoom.
    void clickCanvas(QPoint canvasPoint)
    {
        const QRect pixel = pctTemplate()->toWidget(QRect(canvasPoint, QSize(1, 1)));
        QTest::mouseClick(pctTemplate(), Qt::LeftButton, Qt::NoModifier, pixel.topLeft());
    }

    // Drags the frame's body by (dx, dy) widget pixels with the mouse.
    void dragFrame(int dx, int dy)
    {
        QWidget *body = mshObject()->shpMove(MovableShape::BodyHandle);
        QWidget *container = pctTemplate();
        const QPoint at = body->rect().center();
        const QPoint start = body->mapTo(container, at);
        QTest::mousePress(body, Qt::LeftButton, Qt::NoModifier, at);
        // The handle holds the mouse while the button is down: the moves go to it.
        QTest::mouseMove(body, body->mapFrom(container, start + QPoint(dx / 2, dy / 2)));
        QTest::mouseMove(body, body->mapFrom(container, start + QPoint(dx, dy)));
        QWidget *under = container->childAt(start + QPoint(dx, dy));
        QWidget *target = under ? under : container;
        QTest::mouseRelease(target, Qt::LeftButton, Qt::NoModifier,
                            target->mapFrom(container, start + QPoint(dx, dy)));
    }
};

// A skin folder: <root>/800_480/ui/main_800_480.ui with a template file beside
// it, the shared scheme above, and a common file.
struct SmallSkin
{
    QTemporaryDir root;

    QString uiFolder() const { return root.path() + "/800_480/ui"; }
    QString mainFile() const { return uiFolder() + "/main_800_480.ui"; }

    SmallSkin()
    {
        QVERIFY(writeTestFile(mainFile(),
                      "<header>\r\n"
                      "\t<VAR skin_name=Test>\r\n"
                      "</header>\r\n"
                      "<TEMPLATE tplOwn x=5 y=6 w=50 h=20 text=Tpl>\r\n"
                      "<FONTTYPE ftOwn font=Arial fontsize=12>\r\n"
                      "<LAYER ui_Back z=1>\r\n"
                      "\t<TEXT txtBack x=10 y=10 w=100 h=20 text=Back color=#FFFFFF>\r\n"
                      "</LAYER>\r\n"
                      "<LAYER ui_Main>\r\n"
                      "\t<USELAYER ui_Back/>\r\n"
                      "\t<TEXT txtTitle x=100 y=50 w=200 h=30 text=Title template=tplShared fonttype=ftOwn color=#00FF00 visible>\r\n"
                      "\t<BUTTON btnOk x=300 y=200 w=80 h=40 bmp=missing.bmp>\r\n"
                      "</LAYER>\r\n"
                      "<STATE st_Night>\r\n"
                      "\t<TEXT txtNight x=20 y=20 w=100 h=20 text=Night>\r\n"
                      "</STATE>\r\n"));
        QVERIFY(writeTestFile(uiFolder() + "/templates_a.ui", "<TEMPLATE tplShared fontsize=14>\r\n"));
        QVERIFY(writeTestFile(root.path() + "/800_480/main_scheme.ui", "<FONTTYPE ftScheme font=Verdana>\r\n"));
        QVERIFY(writeTestFile(root.path() + "/common/ui/common.ui", "<LAYER ui_Common>\r\n</LAYER>\r\n"));
    }
};
