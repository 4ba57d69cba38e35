// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Icons are read once.
#include "widgets/icons.h"

#include <QTemporaryDir>
#include <QtTest>

class TestIcons : public QObject
{
    Q_OBJECT

private slots:
    void iconsAreReadOnce();
};

void TestIcons::iconsAreReadOnce()
{
    QTemporaryDir directory;
    for (const char *name : {"a.png", "b.png"}) {
        QImage image(16, 16, QImage::Format_RGB32);
        image.fill(Qt::red);
        QVERIFY(image.save(directory.filePath(name)));
    }
    const QIcon first = Icons::shared(directory.filePath("a.png"));
    const QIcon other = Icons::shared(directory.filePath("b.png"));
    QVERIFY(!first.isNull());
    QVERIFY(!first.pixmap(16, 16).isNull());
    QVERIFY(first.cacheKey() != other.cacheKey());
    QCOMPARE(Icons::shared(directory.filePath("a.png")).cacheKey(), first.cacheKey());
}

QTEST_MAIN(TestIcons)
#include "widgets_icons.moc"
