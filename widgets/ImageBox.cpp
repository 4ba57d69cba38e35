// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The dialog that shows the picture of a field, and in which it is added or replaced.
#include "widgets/ImageBox.h"

#include "ui_ImageBox.h"

#include "model/attachments.h"
#include "widgets/attachfile.h"
#include "widgets/droptarget.h"
#include "widgets/icons.h"
#include "widgets/imagescaling.h"

#include <QDir>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QScreen>

namespace
{

/// Kept free around a picture that is fitted into the dialog.
constexpr QSize FitMargin(10, 10);

/// What the frame around this dialog will take, told by that of the window it opens over.
QSize frameRoom(const QWidget &dialog)
{
    if (dialog.parentWidget() == nullptr) {
        return QSize(0, 0);
    }
    const QWidget *const below = dialog.parentWidget()->window();
    return below->frameGeometry().size() - below->size();
}

} // namespace

ImageBox::ImageBox(QWidget *parent)
    : QDialog(parent)
    , ui(std::make_unique<Ui::ImageBox>())
{
    ui->setupUi(this);
    ui->pbAddReplace->setText(QStringLiteral("Aggiungi/Sostituisci"));
    ui->pbAddReplace->setToolTip(QStringLiteral("Aggiungi/Sostituisci Immagine"));
    ui->pbAddReplace->setIcon(Icons::shared(QStringLiteral(":/imageIcon")));
    ui->pbzoomplus->setIcon(Icons::shared(QStringLiteral(":/zoomInIcon")));
    ui->pbZoomFit->setIcon(Icons::shared(QStringLiteral(":/zoomFitIcon")));
    ui->pbzoomminus->setIcon(Icons::shared(QStringLiteral(":/zoomOutIcon")));
    setAcceptDrops(true);
    connectButtons();
}

ImageBox::~ImageBox() = default;

QSize ImageBox::firstSize(const QSize &wanted, const QSize &available)
{
    return wanted.boundedTo(available);
}

void ImageBox::connectButtons()
{
    connect(ui->buttonBox, &QDialogButtonBox::accepted, this, &ImageBox::accepted);
    connect(ui->buttonBox, &QDialogButtonBox::rejected, this, &ImageBox::rejected);
    connect(ui->pbAddReplace, &QPushButton::clicked, this, &ImageBox::addReplace);
    connect(ui->pbzoomminus, &QPushButton::clicked, this, &ImageBox::zoomOut);
    connect(ui->pbzoomplus, &QPushButton::clicked, this, &ImageBox::zoomIn);
    connect(ui->pbZoomFit, &QPushButton::clicked, this, &ImageBox::fitImage);
}

void ImageBox::loadImage(QString relativePath)
{
    const bool isOurs = Attachments::mayBeOpened(basePath, relativePath);
    originalPixmap = isOurs ? ImageScaling::load(basePath + relativePath) : QPixmap();
    displayInSize(ImageScaling::firstShownSize(originalPixmap.size()));
    ui->leImage->setText(relativePath);
}

void ImageBox::hideAddReplace(bool on)
{
    ui->pbAddReplace->setVisible(!on);
    ui->buttonBox->button(QDialogButtonBox::Cancel)->setVisible(!on);
}

void ImageBox::accepted()
{
    close();
    if (viewOnly) {
        return;
    }
    if (!fileName.isEmpty() && subFolder.isEmpty() && subFolderSource) {
        subFolder = subFolderSource();
        if (subFolder.isEmpty()) {
            // The record's folder could not be told, and nobody else's will do.
            fileName.clear();
        }
    }
    if (!subFolder.isEmpty() && Attachments::isInside(basePath, subFolder)) {
        QDir().mkdir(basePath + subFolder);
    }
    // Deliberate: a choice made when the dialog was open before counts again.
    const QString stored = AttachFile::copyIn(basePath, subFolder, fileName);
    emit acceptedFile(stored.isEmpty() ? subFolder + QLatin1Char('/') : stored);
}

void ImageBox::rejected()
{
    close();
}

void ImageBox::addReplace()
{
    // Deliberate: a cancelled choice empties the field and the picture; Cancel keeps the record's.
    choose(QFileDialog::getOpenFileName(this, QStringLiteral("Open File"), QStringLiteral("/home"),
                                        QStringLiteral("Images (*.png *.jpg *.jpeg *.bmp *.tif)")));
}

void ImageBox::choose(const QString &picture)
{
    fileName = picture;
    ui->leImage->setText(fileName);
    originalPixmap = ImageScaling::load(fileName);
    displayInSize(ImageScaling::sizeInArea(originalPixmap.size(), ui->lbImage->size()));
}

void ImageBox::showEvent(QShowEvent *event)
{
    // The buttons would lie below the edge of a small screen. Known only now: the dialog may be
    // made before the field that it belongs to stands in a window.
    resize(firstSize(size(), screen()->availableSize() - frameRoom(*this)));
    QDialog::showEvent(event);
}

/// The picture that can be dropped here; empty when there is none, or no place for one.
QString ImageBox::droppedPicture(const QMimeData *data) const
{
    const QString picture = AttachFile::fileIn(data, AttachFile::pictureSuffixes());
    const bool isWanted = !viewOnly && !ui->pbAddReplace->isHidden();
    return isWanted && AttachFile::isRegularFile(picture) ? picture : QString();
}

void ImageBox::dragEnterEvent(QDragEnterEvent *event)
{
    // A file dialog may be open over this one.
    if (!DropTarget::isBlocked(*this) && !droppedPicture(event->mimeData()).isEmpty()) {
        DropTarget::acceptCopy(*event);
    }
}

void ImageBox::dropEvent(QDropEvent *event)
{
    DropTarget::acceptCopy(*event);
    const QString picture = droppedPicture(event->mimeData());
    if (!picture.isEmpty()) {
        choose(picture);
    }
}

void ImageBox::fitImage()
{
    const QSize area = ui->imageFrame->size() - FitMargin;
    displayInSize(ImageScaling::sizeInArea(originalPixmap.size(), area));
}

void ImageBox::zoomIn()
{
    const QSize box = ImageScaling::zoomInBox(shownPixmap.size());
    if (box.isValid()) {
        // From the original, so that detail lost by zooming out comes back.
        display(ImageScaling::scaledToFit(originalPixmap, box));
    }
}

void ImageBox::zoomOut()
{
    const QSize box = ImageScaling::zoomOutBox(shownPixmap.size());
    if (box.isValid()) {
        // Deliberate: from the picture shown, which loses detail step by step.
        display(ImageScaling::scaledToFit(shownPixmap, box));
    }
}

void ImageBox::display(const QPixmap &pixmap)
{
    shownPixmap = pixmap;
    ui->lbImage->setPixmap(shownPixmap);
}

/// Shows the original in a size that has its proportions already.
void ImageBox::displayInSize(const QSize &size)
{
    const bool isUnscaled = originalPixmap.isNull() || size == originalPixmap.size();
    display(isUnscaled ? originalPixmap : originalPixmap.scaled(size));
}
