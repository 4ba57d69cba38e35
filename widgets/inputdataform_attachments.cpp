// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Field to be entered: pictures and PDFs.
#include "widgets/inputDataForm.h"

#include "ui_inputDataForm.h"

#include "model/attachments.h"
#include "widgets/ImageBox.h"
#include "widgets/attachfile.h"
#include "widgets/buttonmenu.h"
#include "widgets/droptarget.h"
#include "widgets/imagescaling.h"
#include "widgets/plaintooltip.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMimeData>
#include <QScopedValueRollback>
#include <QSignalBlocker>

namespace
{

bool isPaste(QEvent *event)
{
    return event->type() == QEvent::KeyPress &&
           static_cast<QKeyEvent *>(event)->matches(QKeySequence::Paste);
}

} // namespace

void inputDataForm::setBasePath(const QString &folder)
{
    basePath = folder;
    if (editorKind == Editor::File) {
        showAttachment();
    }
}

void inputDataForm::setAttachmentFolderSource(std::function<QString()> source)
{
    attachmentFolderSource = source;
    if (imageBox != nullptr) {
        imageBox->setSubFolderSource(source);
    }
}

QString inputDataForm::recordFolder() const
{
    const bool isKnown = !attachmentFolder.isEmpty() || !attachmentFolderSource;
    return isKnown ? attachmentFolder : attachmentFolderSource();
}

QStringList inputDataForm::attachableSuffixes() const
{
    if (kind == Formats::Kind::Pdf) {
        return {QStringLiteral("pdf")};
    }
    return AttachFile::pictureSuffixes();
}

void inputDataForm::createImageBox()
{
    if (imageBox != nullptr) {
        return;
    }
    imageBox = new ImageBox(this);
    imageBox->setViewOnly(false);
    imageBox->setSubFolderSource(attachmentFolderSource);
    connect(imageBox, &ImageBox::acceptedFile, this, &inputDataForm::setNewImage);
}

void inputDataForm::viewImageBox()
{
    createImageBox();
    imageBox->setModal(true);
    imageBox->setSubFolder(attachmentFolder);
    imageBox->setBasePath(basePath);
    imageBox->loadImage(imagePath);
    imageBox->show();
}

void inputDataForm::addPdf()
{
    const QString chosen = QFileDialog::getOpenFileName(
        this, QStringLiteral("Open File"), QStringLiteral("/home"), QStringLiteral("Pdf (*.pdf)"));
    // Deliberate: a cancelled choice changes nothing.
    attach(chosen);
}

/// The image dialog has copied the file already. A path that names no file leaves the value.
void inputDataForm::setNewImage(QString fileName)
{
    if (!Attachments::fileName(fileName).isEmpty()) {
        takeAttachment(fileName);
    }
}

/// Attaches the file `source` of the person's choice. One that cannot be copied is attached all
/// the same; the field's mark tells that the file is not there.
void inputDataForm::attach(const QString &source)
{
    if (Attachments::fileName(source).isEmpty()) {
        return;
    }
    const QString folder = recordFolder();
    if (folder.isEmpty() && attachmentFolderSource) {
        // It could not be told, and nobody else's will do.
        return;
    }
    const QString path = AttachFile::copyIn(basePath, folder, source);
    if (!path.isEmpty()) {
        takeAttachment(path);
    }
}

/// Attaches what the clipboard holds: a file, or for a picture field a picture.
void inputDataForm::pasteAttachment()
{
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    const QString file = AttachFile::fileIn(data, attachableSuffixes());
    if (!file.isEmpty()) {
        attach(file);
        return;
    }
    const QImage picture = qvariant_cast<QImage>(data->imageData());
    if (kind != Formats::Kind::Image || picture.isNull()) {
        return;
    }
    const QString folder = recordFolder();
    if (folder.isEmpty() && attachmentFolderSource) {
        return;
    }
    const QString path = AttachFile::savePicture(basePath, folder, picture);
    if (!path.isEmpty()) {
        takeAttachment(path);
    }
}

void inputDataForm::takeAttachment(const QString &path)
{
    imagePath = path;
    {
        const QScopedValueRollback<bool> guard(isFilling, true);
        // Deliberate: a new picture is only kept; it does not switch a condition on.
        const QSignalBlocker blocker(kind == Formats::Kind::Image ? ui->leData : nullptr);
        showLine(path);
    }
    showAttachment();
    noteChange();
}

/// The preview of a picture, or the mark that the file is not where its path says.
void inputDataForm::showAttachment()
{
    const bool isOurs = Attachments::mayBeOpened(basePath, imagePath);
    const bool isThere = isOurs && AttachFile::isRegularFile(basePath + imagePath);
    const int side = style()->pixelMetric(QStyle::PM_SmallIconSize);
    ui->lbMissing->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(side));
    ui->lbMissing->setVisible(!isThere && !imagePath.isEmpty());
    describeEditor();
    PlainToolTip::set(ui->leData, imagePath);

    const bool isPicture = isThere && kind == Formats::Kind::Image;
    const QPixmap preview =
        isPicture ? ImageScaling::thumbnail(basePath + imagePath, devicePixelRatioF()) : QPixmap();
    ui->lbPreview->setPixmap(preview);
    ui->lbPreview->setVisible(!preview.isNull());
}

bool inputDataForm::eventFilter(QObject *watched, QEvent *event)
{
    if (editorKind == Editor::File && isPaste(event)) {
        pasteAttachment();
        return true;
    }
    if (editorKind == Editor::File && event->type() == QEvent::ContextMenu) {
        const auto *const asked = static_cast<QContextMenuEvent *>(event);
        ButtonMenu::exec(asked->globalPos(), {ui->pbViewImage, ui->pbViewPdf}, ui->leData);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void inputDataForm::keyPressEvent(QKeyEvent *event)
{
    if (editorKind == Editor::File && isPaste(event)) {
        pasteAttachment();
        return;
    }
    QWidget::keyPressEvent(event);
}

void inputDataForm::contextMenuEvent(QContextMenuEvent *event)
{
    if (editorKind == Editor::File) {
        ButtonMenu::exec(event->globalPos(), {ui->pbViewImage, ui->pbViewPdf});
    } else {
        QWidget::contextMenuEvent(event);
    }
}

void inputDataForm::dragEnterEvent(QDragEnterEvent *event)
{
    if (!DropTarget::isBlocked(*this) &&
        !AttachFile::fileIn(event->mimeData(), attachableSuffixes()).isEmpty()) {
        DropTarget::acceptCopy(*event);
    }
}

void inputDataForm::dropEvent(QDropEvent *event)
{
    DropTarget::acceptCopy(*event);
    attach(AttachFile::fileIn(event->mimeData(), attachableSuffixes()));
}
