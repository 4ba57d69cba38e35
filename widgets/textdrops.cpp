// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Editors that take dragged texts, but no dragged files.
#include "widgets/textdrops.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

#include <algorithm>

namespace
{

class FileSieve : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() != QEvent::DragEnter) {
            return false;
        }
        const QList<QUrl> urls = static_cast<QDragEnterEvent *>(event)->mimeData()->urls();
        if (std::none_of(urls.begin(), urls.end(),
                         [](const QUrl &url) { return url.isLocalFile(); })) {
            return false;
        }
        event->ignore();
        return true;
    }
};

} // namespace

void letFilesPass(QWidget *target)
{
    target->installEventFilter(new FileSieve(target));
}
