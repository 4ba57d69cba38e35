// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Main window: files that are dropped on it.
#include "app/Tavenor.h"

#include "app/droppedfiles.h"
#include "ui_Tavenor.h"
#include "widgets/droptarget.h"

#include <QDropEvent>

bool Tavenor::mayTake(const DroppedFiles &dropped) const
{
    if (operationRunning || isDesigned() || DropTarget::isBlocked(*this)) {
        return false;
    }
    switch (dropped.kind) {
    case DroppedFiles::Kind::Database:
        return ui->actionOpen_Db->isEnabled() && !isOpenDatabase(dropped.files.first());
    case DroppedFiles::Kind::Records:
        return ui->actionImport_From_File_Export_Manager_File->isEnabled();
    case DroppedFiles::Kind::Structures:
        return ui->actionImport_Table_Structure->isEnabled();
    case DroppedFiles::Kind::None:
        break;
    }
    return false;
}

void Tavenor::dragEnterEvent(QDragEnterEvent *event)
{
    if (mayTake(DroppedFiles::in(*event->mimeData()))) {
        DropTarget::acceptCopy(*event);
    }
}

void Tavenor::dropEvent(QDropEvent *event)
{
    DropTarget::acceptCopy(*event);
    // Later: the program that the files come from waits for the end of this.
    const DroppedFiles dropped = DroppedFiles::in(*event->mimeData());
    QMetaObject::invokeMethod(
        this, [this, dropped] { takeFiles(dropped); }, Qt::QueuedConnection);
}

void Tavenor::takeFiles(const DroppedFiles &dropped)
{
    if (!mayTake(dropped)) {
        return;
    }
    activateWindow();
    if (dropped.kind == DroppedFiles::Kind::Database) {
        switchDatabase(dropped.files.first());
    } else if (!hasDatabase()) {
        return;
    } else if (dropped.kind == DroppedFiles::Kind::Records) {
        importFiles(dropped.files);
    } else {
        importStructures(dropped.files);
    }
}
