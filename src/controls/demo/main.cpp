// SPDX-License-Identifier: MIT
// A gallery of the editor's controls with sample data, for looking at them by
// hand: a property grid with every data type and title lines, a moving frame
// over a box, and the splitters holding them.
#include "MovableShape.h"
#include "PowGrid.h"
#include "QtDialogs.h"
#include "Splitter.h"
#include "clsComboList.h"
#include "clsPrintDialog.h"

#include <QApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPrinter>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

void fillGrid(PowGrid &grid)
{
    grid.Headers()->Add(QStringLiteral("Property"), 1800, true, dtText)->ColumnEditable = false;
    grid.Headers()->Add(QStringLiteral("Value"), 2200, true, dtText);
    grid.Headers()->Add(QStringLiteral("..."), 600, true, dtButton);

    auto colours = std::make_shared<clsComboList>();
    colours->Add(QStringLiteral("Red"), QStringLiteral("r"));
    colours->Add(QStringLiteral("Green"), QStringLiteral("g"));
    colours->Add(QStringLiteral("Blue"), QStringLiteral("b"));

    const auto add = [&grid](const QString &name, const QString &value, int type) {
        PowGridItem *row = grid.Items()->Add();
        row->SetItemColumns({ name, value, QStringLiteral("...") });
        row->DataType = type;
        return row;
    };
    PowGridItem *title = grid.Items()->Add();
    title->TitleLine = true;
    title->setCellText(0, QStringLiteral("Texts"));
    add(QStringLiteral("Text"), QStringLiteral("Hello"), dtNone);
    add(QStringLiteral("Password"), QStringLiteral("secret"), dtPassword);
    add(QStringLiteral("Number"), QStringLiteral("42"), dtNumber);
    add(QStringLiteral("Decimal"), QStringLiteral("3,25"), dtDecimal);
    title = grid.Items()->Add();
    title->TitleLine = true;
    title->setCellText(0, QStringLiteral("Choices"));
    add(QStringLiteral("Check"), QStringLiteral("1"), dtCheck);
    add(QStringLiteral("Date"), QStringLiteral("2024-03-15"), dtDate);
    add(QStringLiteral("Time"), QStringLiteral("13:45:10"), dtTime);
    add(QStringLiteral("Own list"), QStringLiteral("g"), dtItemCombo)->ComboList = colours;
    add(QStringLiteral("Unknown key"), QStringLiteral("zz"), dtItemCombo)->ComboList = colours;
    add(QStringLiteral("Progress"), QStringLiteral("65"), dtProgress);
    add(QStringLiteral("Button"), QStringLiteral("Press me"), dtButton);
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QtDialogs dialogs;
    QPrinter printer;

    QWidget window;
    window.setWindowTitle(QStringLiteral("Controls gallery"));
    window.resize(900, 600);
    auto *layout = new QVBoxLayout(&window);
    auto *outer = new Splitter;
    outer->setResizeButton(Splitter::ButtonMiddle);
    outer->setSplitterSize(90);
    layout->addWidget(outer);

    auto *canvas = new QWidget;
    canvas->setAutoFillBackground(true);
    auto *object = new QLabel(QStringLiteral("Drag my frame"), canvas);
    object->setGeometry(80, 80, 140, 60);
    object->setStyleSheet(QStringLiteral("background: #ffcc66"));
    auto *frame = new MovableShape(canvas);
    frame->setGridAlignSize(8);
    frame->setRefObject(object);

    auto *right = new Splitter;
    right->setSplitterOrientation(Splitter::OneAboveTheOther);
    right->setResizeButton(Splitter::ButtonEnd);
    auto *grid = new PowGrid;
    fillGrid(*grid);
    auto *log = new QPlainTextEdit;
    log->setReadOnly(true);
    right->setControls(grid, log);
    right->setSplitterPosition(6000);
    outer->setControls(canvas, right);
    outer->setSplitterPosition(6000);

    auto *print = new QPushButton(QStringLiteral("Print the grid..."));
    layout->addWidget(print);

    QObject::connect(frame, &MovableShape::EndResize, &window,
                     [object, frame, log](int dx, int dy, int &left, int &top, int &width,
                                          int &height) {
                         log->appendPlainText(QStringLiteral("EndResize moved %1,%2 to %3,%4 %5x%6")
                                                  .arg(dx).arg(dy).arg(left).arg(top)
                                                  .arg(width).arg(height));
                         const int s = frame->handleSize();
                         object->setGeometry(left + s, top + s, width - 2 * s, height - 2 * s);
                     });
    QObject::connect(grid, &PowGrid::ItemChanged, &window,
                     [log](PowGridItem *item, int column) {
                         log->appendPlainText(QStringLiteral("ItemChanged row %1 column %2: %3")
                                                  .arg(item->Index()).arg(column)
                                                  .arg(item->CellText(1)));
                     });
    QObject::connect(print, &QPushButton::clicked, &window, [&dialogs, &printer, grid] {
        clsPrintDialog dialog(dialogs, printer);
        if (dialog.ShowPrinter())
            grid->PrintGrid(printer);
    });

    window.show();
    // "--screenshot FILE" saves a picture of the gallery and quits.
    const QStringList args = app.arguments();
    const int shot = int(args.indexOf(QStringLiteral("--screenshot")));
    if (shot > 0 && shot + 1 < args.size()) {
        app.processEvents();
        return window.grab().save(args[shot + 1]) ? 0 : 1;
    }
    return app.exec();
}
