// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The dialog that shows the picture of a field, and in which it is added or replaced.
#pragma once

#include <QDialog>
#include <QPixmap>
#include <QString>

#include <functional>
#include <memory>

class QMimeData;

namespace Ui
{
class ImageBox;
}

/// Shows one picture with its zoom. Accepting copies the file chosen last into the record's
/// folder and tells the path to store. One dialog serves a field as long as the field lives.
/// There are no messages: what cannot be read shows as empty, a copy that fails is ignored.
class ImageBox : public QDialog
{
    Q_OBJECT

public:
    explicit ImageBox(QWidget *parent = nullptr);
    ~ImageBox() override;

    /// The size in which a dialog that should be `wanted` opens on a screen with so much room.
    static QSize firstSize(const QSize &wanted, const QSize &available);

    /// The record's folder, relative to the base folder, into which pictures are copied.
    void setSubFolder(QString folder) { subFolder = folder; }

    /// Asked for the record's folder when a picture is accepted and none was set: the folder of
    /// a new record is known only then.
    void setSubFolderSource(std::function<QString()> source) { subFolderSource = source; }

    /// The database's folder, with its final "/".
    void setBasePath(QString path) { basePath = path; }

    /// Shows the picture stored at basePath + relativePath; nothing when it cannot be read or
    /// lies outside the base folder.
    void loadImage(QString relativePath);

    /// When on, accepting copies nothing and tells nothing.
    void setViewOnly(bool on) { viewOnly = on; }

    /// Hides (or shows again) the button to add a picture and the Cancel button.
    void hideAddReplace(bool on);

signals:
    /// The path to store for the accepted picture: the record's folder, "/" and the file's name.
    /// The name is empty when no file was chosen, or none that may be attached.
    void acceptedFile(QString name);

public slots:
    void accepted();
    void rejected();
    void addReplace();
    void zoomOut();
    void zoomIn();
    void fitImage();

protected:
    void showEvent(QShowEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void connectButtons();
    QString droppedPicture(const QMimeData *data) const;
    void choose(const QString &picture);
    void display(const QPixmap &pixmap);
    void displayInSize(const QSize &size);

    const std::unique_ptr<Ui::ImageBox> ui;
    QString fileName;
    QString subFolder;
    std::function<QString()> subFolderSource;
    QString basePath;
    QPixmap shownPixmap;
    QPixmap originalPixmap;
    bool viewOnly = false;
};
