// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Icons on every ground, and small widgets that show more than they have room for, or nothing.
#include "widgets/ElidedLabel.h"
#include "widgets/PanelContents.h"
#include "widgets/RecordListWidget.h"
#include "widgets/SearchLine.h"
#include "widgets/icons.h"
#include "widgets/imagescaling.h"
#include "widgets/inputDataForm.h"

#include <QApplication>
#include <QDirIterator>
#include <QHelpEvent>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QTemporaryDir>
#include <QToolButton>
#include <QToolTip>
#include <QVBoxLayout>
#include <QtTest>

namespace
{

/// The colour in the middle of a 16 x 16 icon that is drawn in one colour.
QColor shownColour(const QIcon &icon, QIcon::Mode mode = QIcon::Normal)
{
    return icon.pixmap(QSize(16, 16), mode).toImage().pixelColor(8, 8);
}

QIcon plainIcon(const QColor &colour)
{
    QPixmap drawing(32, 32);
    drawing.fill(colour);
    return QIcon(drawing);
}

/// Rests the pointer in the middle of `place`, where nothing is told any more.
void restAt(QWidget &widget, const QRect &place)
{
    QToolTip::hideText();
    QTRY_VERIFY(QToolTip::text().isEmpty());
    QHelpEvent rest(QEvent::ToolTip, place.center(), widget.mapToGlobal(place.center()));
    QApplication::sendEvent(&widget, &rest);
}

/// Paints for the length of a test with the grounds of a dark desktop.
class DarkDesktop
{
public:
    DarkDesktop()
    {
        QPalette dark;
        dark.setColor(QPalette::Window, QColor(53, 53, 53));
        QApplication::setPalette(dark);
    }
    ~DarkDesktop() { QApplication::setPalette(QPalette()); }
    DarkDesktop(const DarkDesktop &) = delete;
    DarkDesktop &operator=(const DarkDesktop &) = delete;
};

const QColor Slate(0x6a, 0x81, 0x97);
const QString LongName = QStringLiteral("Il nome molto lungo di una tabella che non ci sta");

} // namespace

class TestLook : public QObject
{
    Q_OBJECT

private slots:
    void iconsStayAsDrawnOnLightGrounds();
    void iconsAreBrighterOnDarkGrounds();
    void markedEntriesHaveIconsInTheirTextsColour();
    void buttonsUnderThePointerKeepTheirIcons();
    void iconsWithoutAPictureStaySo();
    void iconsOfAWindowAreFitted();
    void everyIconHasADensePicture();
    void tableIconsAreScaledSmoothly();
    void thumbnailsUseThePixelsOfDenseScreens();
    void labelsTellWhatTheyCut();
    void labelsThatFitTellNothing();
    void endlessNamesAreMeasuredInPart();
    void linesTellWhatTheyCut();
    void linesOutOfSightComeToTheMiddle();
    void anEmptyListMayHaveAPicture();
    void anEmptyPanelSaysWhatToDo();
    void aSearchThatFindsNothingIsSeen();
    void searchLinesAreClearedByAButton();
    void theFirstJoiningWordIsPale();
    void fieldsTellWhenTheyTakePart();
};

void TestLook::iconsStayAsDrawnOnLightGrounds()
{
    const QIcon drawing = plainIcon(Slate);
    const QIcon icon = Icons::onEveryGround(drawing);
    for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Disabled, QIcon::Active}) {
        QCOMPARE(icon.pixmap(QSize(16, 16), mode).toImage(),
                 drawing.pixmap(QSize(16, 16), mode).toImage());
    }
    QCOMPARE(icon.actualSize(QSize(100, 50)), drawing.actualSize(QSize(100, 50)));
}

void TestLook::iconsAreBrighterOnDarkGrounds()
{
    const QIcon icon = Icons::onEveryGround(plainIcon(Slate));
    const DarkDesktop dark;
    const QColor shown = shownColour(icon);
    QVERIFY2(shown.lightness() > Slate.lightness() + 30, qPrintable(shown.name()));
    // What is off stays faint.
    QVERIFY(shownColour(icon, QIcon::Disabled).lightness() < shown.lightness());
}

void TestLook::markedEntriesHaveIconsInTheirTextsColour()
{
    const QIcon icon = Icons::onEveryGround(plainIcon(Slate));
    const QColor text = QApplication::palette().color(QPalette::HighlightedText);
    QCOMPARE(shownColour(icon, QIcon::Selected), text);
    QMenu menu;
    menu.addAction(icon, QStringLiteral("Apri Db"));
    menu.popup(QPoint(0, 0));
    QCOMPARE(shownColour(icon, QIcon::Active), text);
    QCOMPARE(shownColour(icon), Slate);
    menu.hide();
    QCOMPARE(shownColour(icon, QIcon::Active), Slate);
}

void TestLook::buttonsUnderThePointerKeepTheirIcons()
{
    const QIcon icon = Icons::onEveryGround(plainIcon(Slate));
    QCOMPARE(shownColour(icon, QIcon::Active), Slate);
}

void TestLook::iconsWithoutAPictureStaySo()
{
    QVERIFY(Icons::onEveryGround(QIcon()).isNull());
    QVERIFY(Icons::onEveryGround(QIcon(QStringLiteral("nowhere.png"))).pixmap(16, 16).isNull());
}

void TestLook::iconsOfAWindowAreFitted()
{
    QWidget window;
    QPushButton button(&window);
    QPushButton bare(&window);
    QAction action(&window);
    button.setIcon(plainIcon(Slate));
    action.setIcon(plainIcon(Slate));
    Icons::fitToGround(window);
    const DarkDesktop dark;
    QVERIFY(shownColour(button.icon()).lightness() > Slate.lightness());
    QVERIFY(shownColour(action.icon()).lightness() > Slate.lightness());
    QVERIFY(bare.icon().isNull());
}

void TestLook::everyIconHasADensePicture()
{
    int icons = 0;
    QDirIterator resources(QStringLiteral(":/"), {QStringLiteral("*Icon")}, QDir::Files);
    while (resources.hasNext()) {
        const QString name = resources.next();
        const QSize size = QImage(name).size();
        QVERIFY2(size == QSize(32, 32) || size == QSize(64, 64), qPrintable(name));
        QCOMPARE(QImage(name + QStringLiteral("@2x")).size(), size * 2);
        ++icons;
    }
    QVERIFY(icons > 50);
}

void TestLook::tableIconsAreScaledSmoothly()
{
    QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("icon.png"));
    QImage chequered(128, 128, QImage::Format_RGB32);
    for (int y = 0; y < 128; ++y) {
        for (int x = 0; x < 128; ++x) {
            chequered.setPixelColor(x, y, (x + y) % 2 == 0 ? Qt::black : Qt::white);
        }
    }
    QVERIFY(chequered.save(file));
    const QPixmap icon = ImageScaling::smoothPreview(file, QSize(200, 64));
    QCOMPARE(icon.size(), QSize(64, 64));
    // The fast method takes pixels as they are, black or white.
    const int middle = icon.toImage().pixelColor(32, 32).lightness();
    QVERIFY2(middle > 64 && middle < 192, qPrintable(QString::number(middle)));
    QVERIFY(ImageScaling::smoothPreview(file, QSize()).isNull());
    QVERIFY(ImageScaling::smoothPreview(directory.filePath(QStringLiteral("no.png")), QSize(9, 9))
                .isNull());
}

void TestLook::thumbnailsUseThePixelsOfDenseScreens()
{
    QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("cover.png"));
    QImage cover(300, 100, QImage::Format_RGB32);
    cover.fill(Qt::red);
    QVERIFY(cover.save(file));
    QCOMPARE(ImageScaling::thumbnail(file, 1).size(), QSize(120, 40));
    const QPixmap dense = ImageScaling::thumbnail(file, 2);
    QCOMPARE(dense.size(), QSize(240, 80));
    QCOMPARE(dense.devicePixelRatio(), 2.0);
    QVERIFY(ImageScaling::thumbnail(directory.filePath(QStringLiteral("no.png")), 2).isNull());
}

void TestLook::labelsTellWhatTheyCut()
{
    ElidedLabel label;
    label.setText(LongName);
    label.resize(80, 20);
    label.show();
    QVERIFY(label.isElided());
    QCOMPARE(label.text(), LongName);
    restAt(label, label.rect());
    QVERIFY(QToolTip::text().contains(LongName));
    // A tip of the label's own comes first.
    label.setToolTip(QStringLiteral("altro"));
    restAt(label, label.rect());
    QCOMPARE(QToolTip::text(), QStringLiteral("altro"));
}

void TestLook::labelsThatFitTellNothing()
{
    ElidedLabel label;
    label.setText(QStringLiteral("libri"));
    label.resize(400, 20);
    label.show();
    QVERIFY(!label.isElided());
    restAt(label, label.rect());
    QCOMPARE(QToolTip::text(), QString());
}

void TestLook::endlessNamesAreMeasuredInPart()
{
    // Measured or painted whole, each of these would hold up the page at every turn.
    constexpr int WidthOfAnyScreen = 60000;
    const QString name = QStringLiteral("A") + QString(1000000, QLatin1Char('m')) + LongName;
    ElidedLabel label;
    label.setText(name);
    const QSize oneLine(0, QLabel(LongName).sizeHint().height());
    QVERIFY(label.sizeHint().width() > 10000);
    QVERIFY(label.sizeHint().width() < WidthOfAnyScreen);
    QCOMPARE(label.sizeHint().height(), oneLine.height());
    QCOMPARE(label.minimumSizeHint().height(), oneLine.height());
    label.resize(300, 20);
    QVERIFY(label.isElided());
    QCOMPARE(label.text(), name);

    RecordListWidget list;
    list.addLines({name});
    const QModelIndex line = list.model()->index(0, 0);
    QVERIFY(list.visualRect(line).width() < WidthOfAnyScreen);
    QVERIFY(list.sizeHintForIndex(line).width() > 10000);
    QVERIFY(list.sizeHintForIndex(line).width() < WidthOfAnyScreen);
    QCOMPARE(list.hiddenText(line), name);
    QCOMPARE(list.item(0)->text(), name);
}

void TestLook::linesTellWhatTheyCut()
{
    RecordListWidget list;
    list.addItems({LongName, QStringLiteral("<b>It</b>")});
    list.resize(160, 200);
    list.show();
    const QModelIndex longLine = list.model()->index(0, 0);
    const QModelIndex shortLine = list.model()->index(1, 0);
    QCOMPARE(list.hiddenText(longLine), LongName);
    QCOMPARE(list.hiddenText(shortLine), QString());
    restAt(*list.viewport(), list.visualRect(longLine));
    QVERIFY(QToolTip::text().contains(LongName));
    restAt(*list.viewport(), list.visualRect(shortLine));
    QCOMPARE(QToolTip::text(), QString());
    list.item(1)->setText(QStringLiteral("<img src=x>").repeated(9));
    restAt(*list.viewport(), list.visualRect(shortLine));
    QVERIFY(QToolTip::text().contains(QStringLiteral("&lt;img src=x&gt;")));
}

void TestLook::linesOutOfSightComeToTheMiddle()
{
    RecordListWidget list;
    for (int row = 0; row < 200; ++row) {
        list.addItem(QString::number(row));
    }
    list.resize(160, 400);
    list.show();
    const auto place = [&list](int row) {
        return list.visualItemRect(list.item(row)).center().y();
    };
    const int middle = list.viewport()->height() / 2;
    list.revealRow(100);
    QCOMPARE(list.currentRow(), 100);
    const int shown = place(100);
    QVERIFY2(qAbs(shown - middle) < 30, qPrintable(QString::number(shown)));
    // A line in sight is chosen where it stands.
    list.revealRow(104);
    QCOMPARE(list.currentRow(), 104);
    QCOMPARE(place(100), shown);
    // No line is none.
    list.revealRow(-1);
    QCOMPARE(list.currentRow(), -1);
}

void TestLook::anEmptyListMayHaveAPicture()
{
    RecordListWidget list;
    list.resize(200, 300);
    const auto blue = [&list] {
        const QImage picture = list.viewport()->grab().toImage();
        const QColor middle = picture.pixelColor(picture.width() / 2, picture.height() / 2 - 20);
        return middle.blue() > middle.red() + 60;
    };
    list.setPlaceholder(QStringLiteral("0 Records"), {}, plainIcon(Qt::blue));
    QVERIFY(blue());
    QCOMPARE(list.accessibleDescription(), QStringLiteral("0 Records"));
    list.setPlaceholder(QStringLiteral("0 Records"), {});
    QVERIFY(!blue());
}

void TestLook::anEmptyPanelSaysWhatToDo()
{
    PanelContents panel;
    panel.resize(200, 300);
    QVBoxLayout layout(&panel);
    panel.setPlaceholder({plainIcon(Qt::blue), QString(), {QStringLiteral("Filtra › Salva")}});
    const QImage blank = [] {
        QWidget plain;
        plain.resize(200, 300);
        return plain.grab().toImage();
    }();
    QVERIFY(panel.isEmpty());
    QCOMPARE(panel.accessibleDescription(), QStringLiteral("Filtra › Salva"));
    QVERIFY(panel.grab().toImage() != blank);

    auto *const button = new QWidget;
    layout.addWidget(button);
    QVERIFY(!panel.isEmpty());
    QCOMPARE(panel.accessibleDescription(), QString());
    QCOMPARE(panel.grab().toImage(), blank);

    delete button;
    QVERIFY(panel.isEmpty());
    QCOMPARE(panel.accessibleDescription(), QStringLiteral("Filtra › Salva"));
}

void TestLook::aSearchThatFindsNothingIsSeen()
{
    SearchLine line;
    line.setText(QStringLiteral("zzz"));
    const QColor usual = line.palette().color(QPalette::Text);
    const qint64 usualSign = line.sign().cacheKey();
    line.setNoMatch(QStringLiteral("0 Records"));
    QVERIFY(line.hasNoMatch());
    QCOMPARE(line.accessibleDescription(), QStringLiteral("0 Records"));
    QCOMPARE(line.palette().color(QPalette::Text),
             QApplication::palette().color(QPalette::PlaceholderText));
    QVERIFY(line.sign().cacheKey() != usualSign);
    QCOMPARE(line.text(), QStringLiteral("zzz"));
    line.setNoMatch(QString());
    QVERIFY(!line.hasNoMatch());
    QCOMPARE(line.accessibleDescription(), QString());
    QCOMPARE(line.palette().color(QPalette::Text), usual);
    QCOMPARE(line.sign().cacheKey(), usualSign);
}

void TestLook::searchLinesAreClearedByAButton()
{
    SearchLine line;
    line.resize(200, 28);
    line.setText(QStringLiteral("casa"));
    line.show();
    // The magnifier's is the other one.
    const QList<QToolButton *> buttons = line.findChildren<QToolButton *>();
    QCOMPARE(buttons.size(), 2);
    for (QToolButton *const button : buttons) {
        button->click();
    }
    QCOMPARE(line.text(), QString());
}

void TestLook::theFirstJoiningWordIsPale()
{
    const auto painted = [](bool active, bool joins) {
        inputDataForm form;
        form.setFilterRole(true);
        form.setColumnName(QStringLiteral("NSTRINGFORMAT_Titolo"));
        form.setValue(QStringLiteral("STRING"), QVariant());
        form.clearCondition();
        form.setActive(active);
        form.setJoins(joins);
        return form.findChild<QPushButton *>(QStringLiteral("pbAnd"))->grab().toImage();
    };
    const QImage pale = painted(false, true);
    QVERIFY(painted(true, true) != pale);
    QCOMPARE(painted(true, false), pale);
}

void TestLook::fieldsTellWhenTheyTakePart()
{
    inputDataForm form;
    QSignalSpy changes(&form, &inputDataForm::activeChanged);
    form.setActive(true);
    form.setActive(true);
    QCOMPARE(changes.size(), 1);
    form.clearCondition();
    QCOMPARE(changes.size(), 2);
}

QTEST_MAIN(TestLook)
#include "widgets_look.moc"
