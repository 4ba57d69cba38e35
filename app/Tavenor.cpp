// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Main window: construction, look, texts and connections of all pages.
#include "app/Tavenor.h"

#include "app/firstsize.h"
#include "app/workingfiles.h"
#include "ui_Tavenor.h"
#include "widgets/AboutForm.h"
#include "widgets/ListButtonForm.h"
#include "widgets/calcForm.h"
#include "widgets/chooseNameForm.h"
#include "widgets/icons.h"
#include "widgets/inputDataForm.h"
#include "widgets/newTableElement.h"
#include "widgets/outputDataForm.h"
#include "widgets/progressBarForm.h"

#include <QApplication>
#include <QCloseEvent>
#include <QScreen>
#include <QScrollArea>
#include <QStyleFactory>

namespace
{

const QString WindowTitle = QStringLiteral("DB Administration Tool");

// The style of the desktop that most users have, where the toolkit offers it.
void setProgramStyle()
{
    const QString wanted = QStringLiteral("windowsvista");
    if (QStyleFactory::keys().contains(wanted, Qt::CaseInsensitive)) {
        QApplication::setStyle(wanted);
    }
}

void makeHeading(QWidget *label)
{
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * 1.3);
    font.setWeight(QFont::DemiBold);
    label->setFont(font);
}

} // namespace

Tavenor::Tavenor(QWidget *parent)
    : QMainWindow(parent)
    , ui(std::make_unique<Ui::Tavenor>())
{
    ui->setupUi(this);
    Icons::fitToGround(*this);
    setProgramStyle();
    setWindowTitle(WindowTitle);
    setTexts();
    setLook();
    makeDialogs();
    makeSecondDoor();
    makeModeMarks();
    connectDatabase();
    connectActions();
    connectRecordList();
    connectRecordView();
    connectRecordEntry();
    connectDesigner();
    connectLinks();
    connectFilters();
    connectCalculator();
    connectMaintenance();
    connectXmf();
    connectTsc();
    connectReadable();
    connectKeyboard();
    connectMenus();
    setAcceptDrops(true);
    setReadOnly(false);
    administratorModeEnabled(false);

    db = std::make_unique<DataBase>();
    // A copy that finds the lock taken must not write, so it has to know before it opens.
    opensReadOnly = WorkingFiles::isLocked();
    db->setReadOnly(opensReadOnly);
    prepareDataFolders(WorkingFiles::lastDatabase());
    setDatabase(false);
    ui->userListWidget->setFocus();
}

Tavenor::~Tavenor()
{
    if (!readOnly) {
        WorkingFiles::releaseLock();
    }
    // The page widgets are made without a parent, so nobody else deletes them.
    qDeleteAll(viewWidgets);
    qDeleteAll(inputWidgets);
    qDeleteAll(designerRows);
    qDeleteAll(calcWidgets);
    qDeleteAll(listButtons);
    qDeleteAll(filterWidgets);
    qDeleteAll(filterButtons);
}

void Tavenor::setTexts()
{
    setActionTexts();
    setTableTexts();
    setRecordListTexts();
    setRecordViewTexts();
    setRecordEntryTexts();
    setDesignerTexts();
    setFilterTexts();
    setCalculatorTexts();
}

void Tavenor::setLook()
{
    for (QWidget *heading :
         {static_cast<QWidget *>(ui->lbListName), static_cast<QWidget *>(ui->lbViewInfo),
          static_cast<QWidget *>(ui->lbEdit), static_cast<QWidget *>(ui->lbDesigner),
          static_cast<QWidget *>(ui->lbFilterPage), static_cast<QWidget *>(ui->lbCalc)}) {
        makeHeading(heading);
    }
    setCalculatorLook();
    ui->userListWidget->setSpacing(1);
    // A record is read like a card. Boxes without a tick are seen on this ground in every palette.
    ui->datiScroll->setBackgroundRole(QPalette::AlternateBase);
    ui->datiContents->setBackgroundRole(QPalette::AlternateBase);
    ui->datiContents->setForegroundRole(QPalette::Text);
    // Some palettes give what is switched off another ground, which would show as a patch.
    for (QWidget *const panel :
         {ui->tablesScroll->viewport(), ui->tablesContents, ui->filtersScroll->viewport(),
          static_cast<QWidget *>(ui->filtersContents)}) {
        panel->setAutoFillBackground(false);
    }
    // On wide screens what belongs together stays together.
    for (QWidget *const page :
         {ui->datiContents, ui->newElementContents, ui->calcContents,
          static_cast<QWidget *>(ui->filterContents), static_cast<QWidget *>(ui->totalLine)}) {
        page->setMaximumWidth(FirstSize::WidestPage);
    }

    fitSmallScreens();
    resize(FirstSize::window(QGuiApplication::primaryScreen()->availableSize()));
    ui->mainSplitter->setStretchFactor(1, 1);
    ui->mainSplitter->setSizes(FirstSize::panelAndPages(width()));
    ui->recordSplitter->setStretchFactor(1, 1);
    ui->recordSplitter->setSizes(FirstSize::listAndRecord(width()));
}

void Tavenor::fitSmallScreens()
{
    // Where the screen has less room than the widest page needs, what is beyond it is scrolled to:
    // a window that is larger than the screen has parts that nobody can reach.
    auto *const room = new QScrollArea(ui->centralWidget);
    room->setObjectName(QStringLiteral("roomScroll"));
    room->setFrameShape(QFrame::NoFrame);
    room->setFocusPolicy(Qt::NoFocus);
    room->setWidgetResizable(true);
    room->setWidget(ui->mainSplitter);
    ui->centralLayout->addWidget(room);
}

void Tavenor::closeEvent(QCloseEvent *event)
{
    if (!qApp->isSavingSession() && !mayDiscardTyped()) {
        event->ignore();
        return;
    }
    // The parentless dialogs would otherwise keep the program alive.
    progressForm->setHeld(false);
    progressForm->hide();
    nameForm->hide();
    QMainWindow::closeEvent(event);
}
