// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Entries of the list of tables and of saved filters.
#include "widgets/ElidedLabel.h"
#include "widgets/ListButtonForm.h"
#include "widgets/RowButton.h"

#include <QFrame>
#include <QLabel>
#include <QLayout>
#include <QMetaMethod>
#include <QPointer>
#include <QSignalSpy>
#include <QtTest>

namespace
{

const QString Long = QStringLiteral("Soci della biblioteca comunale di Sanremo");

QPushButton *button(const ListButtonForm &form)
{
    return form.findChild<QPushButton *>("pbList");
}

QLabel *label(const ListButtonForm &form)
{
    return form.findChild<QLabel *>("lbListName");
}

QByteArrayList parameterNames(const QObject &object, const char *signature)
{
    const QMetaObject *meta = object.metaObject();
    return meta->method(meta->indexOfMethod(signature)).parameterNames();
}

} // namespace

class TestListButtonForm : public QObject
{
    Q_OBJECT

private slots:
    void startsEmpty();
    void parameterNamesAreInterface();
    void tablesShowTheirDisplayName_data();
    void tablesShowTheirDisplayName();
    void filtersShowTheirOwnName();
    void tablesAnnounceThemselves();
    void filtersAnnounceTableAndName();
    void theWholeRowIsTheButton();
    void theKeyboardPressesIt();
    void aReceiverMayDeleteIt();
    void theIconStandsAtTheLeft();
    void theCurrentEntryIsMarked();
    void theMarkOfADisabledEntryIsPale();
    void focusAndPressingAreVisible();
    void namesAreShortenedOnlyWhenPainted();
    void markupInNamesIsText();
};

void TestListButtonForm::startsEmpty()
{
    const ListButtonForm form;
    QVERIFY(form.findChild<QFrame *>("frame") != nullptr);
    QVERIFY(form.findChild<QLayout *>("gridLayout") != nullptr);
    QVERIFY(form.findChild<QFrame *>("line") != nullptr);
    QCOMPARE(button(form)->iconSize(), QSize(32, 32));
    QVERIFY(button(form)->icon().isNull());
    QCOMPARE(button(form)->text(), QString());
    QCOMPARE(label(form)->text(), QString());
    QCOMPARE(form.tableName(), QString());
    QCOMPARE(form.savedFilterTable(), QString());
    QCOMPARE(form.savedFilterName(), QString());
    QVERIFY(!form.isFilter());
    QVERIFY(!form.isCurrent());
}

void TestListButtonForm::parameterNamesAreInterface()
{
    const ListButtonForm form;
    QCOMPARE(parameterNames(form, "changeList(QString)"), QByteArrayList{"lName"});
    QCOMPARE(parameterNames(form, "changeListAndFilter(QString,QString)"),
             (QByteArrayList{"savedFilterTable", "savedFilterName"}));
    QVERIFY(form.metaObject()->indexOfSlot("pushed()") >= 0);
}

void TestListButtonForm::tablesShowTheirDisplayName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("shown");
    QTest::newRow("a plain table") << "Libri"
                                   << "Libri";
    QTest::newRow("a hidden table") << "HIDDENTABLE_Note"
                                    << "#Note";
    QTest::newRow("a sub-table") << "HIDDENTABLE_Spese_XSBTX_SUBTABLEFORMAT_Lista_XSBTUSRX_Casa_1"
                                 << "#Spese->Casa_1->Lista";
}

void TestListButtonForm::tablesShowTheirDisplayName()
{
    QFETCH(QString, name);
    QFETCH(QString, shown);
    ListButtonForm form;
    form.setTableName(name);
    QCOMPARE(form.tableName(), name);
    QCOMPARE(label(form)->text(), shown);
    QCOMPARE(button(form)->accessibleName(), shown);
    QCOMPARE(button(form)->toolTip(), shown);
    QCOMPARE(form.toolTip(), shown);
    QVERIFY(!form.isFilter());
}

void TestListButtonForm::filtersShowTheirOwnName()
{
    ListButtonForm form;
    form.setSavedFilter("HIDDENTABLE_Note", "Non letti");
    QCOMPARE(form.savedFilterTable(), QString("HIDDENTABLE_Note"));
    QCOMPARE(form.savedFilterName(), QString("Non letti"));
    QVERIFY(form.isFilter());
    QCOMPARE(label(form)->text(), QString("Non letti"));
    QCOMPARE(button(form)->accessibleName(), QString("Non letti"));
    QCOMPARE(button(form)->toolTip(), QString("#Note"));
    QCOMPARE(form.toolTip(), QString("#Note"));
    // Over the label too, which would tell its own text where that is cut short.
    QCOMPARE(label(form)->toolTip(), QString("#Note"));
}

void TestListButtonForm::tablesAnnounceThemselves()
{
    ListButtonForm form;
    form.setTableName("HIDDENTABLE_Note");
    QSignalSpy tables(&form, &ListButtonForm::changeList);
    QSignalSpy filters(&form, &ListButtonForm::changeListAndFilter);
    button(form)->click();
    QCOMPARE(tables.count(), 1);
    QCOMPARE(tables.at(0), QVariantList{"HIDDENTABLE_Note"});
    form.pushed();
    QCOMPARE(tables.count(), 2);
    QCOMPARE(filters.count(), 0);
}

void TestListButtonForm::filtersAnnounceTableAndName()
{
    ListButtonForm form;
    form.setSavedFilter("HIDDENTABLE_Note", "Non letti");
    QSignalSpy tables(&form, &ListButtonForm::changeList);
    QSignalSpy filters(&form, &ListButtonForm::changeListAndFilter);
    button(form)->click();
    QCOMPARE(filters.count(), 1);
    QCOMPARE(filters.at(0), (QVariantList{"HIDDENTABLE_Note", "Non letti"}));
    QCOMPARE(tables.count(), 0);
}

void TestListButtonForm::theWholeRowIsTheButton()
{
    ListButtonForm form;
    form.setTableName("Libri");
    form.resize(220, form.sizeHint().height());
    form.show();
    QSignalSpy tables(&form, &ListButtonForm::changeList);
    QTest::mouseClick(label(form), Qt::LeftButton);
    QCOMPARE(tables.count(), 1);
    QTest::mouseClick(button(form), Qt::LeftButton, {}, QPoint(16, 20));
    QCOMPARE(tables.count(), 2);
    QTest::mouseClick(button(form), Qt::LeftButton, {}, QPoint(215, 20));
    QCOMPARE(tables.count(), 3);
    QTest::mouseClick(label(form), Qt::RightButton);
    QCOMPARE(tables.count(), 3);
    QCOMPARE(button(form)->width(), 220);
}

void TestListButtonForm::theKeyboardPressesIt()
{
    ListButtonForm form;
    form.setTableName("Libri");
    form.show();
    QApplication::setActiveWindow(&form);
    form.setFocus();
    QTRY_VERIFY(button(form)->hasFocus());
    QSignalSpy tables(&form, &ListButtonForm::changeList);
    QTest::keyClick(button(form), Qt::Key_Space);
    QCOMPARE(tables.count(), 1);
    QCOMPARE(label(form)->focusPolicy(), Qt::NoFocus);
}

void TestListButtonForm::aReceiverMayDeleteIt()
{
    QPointer<ListButtonForm> form = new ListButtonForm;
    form->setTableName("Libri");
    connect(form.data(), &ListButtonForm::changeList, this, [&form]() { delete form; });
    form->pushed();
    QVERIFY(form.isNull());

    form = new ListButtonForm;
    form->setSavedFilter("Libri", "Non letti");
    connect(form.data(), &ListButtonForm::changeListAndFilter, this, [&form]() { delete form; });
    form->pushed();
    QVERIFY(form.isNull());
}

void TestListButtonForm::theIconStandsAtTheLeft()
{
    QPixmap picture(32, 32);
    picture.fill(Qt::red);
    ListButtonForm form;
    form.setIcon(QIcon(picture));
    form.resize(220, form.sizeHint().height());
    const QImage painted = button(form)->grab().toImage();
    const int middle = painted.height() / 2;
    QCOMPARE(painted.pixelColor(8, middle), QColor(Qt::red));
    QCOMPARE(painted.pixelColor(39, middle), QColor(Qt::red));
    QVERIFY(painted.pixelColor(7, middle) != QColor(Qt::red));
    QVERIFY(painted.pixelColor(40, middle) != QColor(Qt::red));
    QVERIFY(label(form)->mapTo(&form, QPoint()).x() >= 40);
}

void TestListButtonForm::theCurrentEntryIsMarked()
{
    ListButtonForm form;
    form.setTableName("Libri");
    form.resize(220, form.sizeHint().height());
    const QColor marked = form.palette().color(QPalette::Highlight);
    QVERIFY(button(form)->grab().toImage().pixelColor(20, 20) != marked);
    form.setCurrent(true);
    QVERIFY(form.isCurrent());
    QCOMPARE(button(form)->grab().toImage().pixelColor(20, 20), marked);
    QCOMPARE(label(form)->foregroundRole(), QPalette::HighlightedText);
    // A dark icon stays readable: it keeps the usual ground.
    form.setIcon(QIcon(QPixmap(QSize(1, 1))));
    QCOMPARE(button(form)->grab().toImage().pixelColor(12, 12),
             form.palette().color(QPalette::Base));
    QCOMPARE(button(form)->grab().toImage().pixelColor(100, 20), marked);
    form.setIcon(QIcon());
    form.setCurrent(false);
    QVERIFY(!form.isCurrent());
    QVERIFY(button(form)->grab().toImage().pixelColor(20, 20) != marked);
    QCOMPARE(label(form)->foregroundRole(), QPalette::WindowText);
}

void TestListButtonForm::theMarkOfADisabledEntryIsPale()
{
    ListButtonForm form;
    form.setTableName("Libri");
    form.resize(220, form.sizeHint().height());
    // A palette whose pale mark has the colour of the text upon it.
    QPalette palette = form.palette();
    palette.setColor(QPalette::Disabled, QPalette::Highlight, Qt::darkGray);
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText, Qt::darkGray);
    form.setPalette(palette);
    form.setCurrent(true);
    form.setEnabled(false);
    const QColor mark = button(form)->grab().toImage().pixelColor(20, 20);
    QVERIFY(mark != QColor(Qt::darkGray));
    QVERIFY(mark != palette.color(QPalette::Disabled, QPalette::Window));
    QCOMPARE(label(form)->foregroundRole(), QPalette::WindowText);
    form.setEnabled(true);
    QCOMPARE(label(form)->foregroundRole(), QPalette::HighlightedText);
}

void TestListButtonForm::focusAndPressingAreVisible()
{
    ListButtonForm form;
    form.setTableName("Libri");
    form.resize(220, form.sizeHint().height());
    form.show();
    QApplication::setActiveWindow(&form);
    button(form)->clearFocus();
    const QImage idle = button(form)->grab().toImage();
    button(form)->setFocus();
    QTRY_VERIFY(button(form)->hasFocus());
    const QImage focused = button(form)->grab().toImage();
    QVERIFY(focused != idle);
    form.setCurrent(true);
    const QImage currentFocused = button(form)->grab().toImage();
    button(form)->clearFocus();
    QVERIFY(button(form)->grab().toImage() != currentFocused);
    form.setCurrent(false);
    button(form)->setDown(true);
    QVERIFY(button(form)->grab().toImage() != idle);
}

void TestListButtonForm::namesAreShortenedOnlyWhenPainted()
{
    ListButtonForm form;
    form.setTableName(Long);
    form.resize(160, form.sizeHint().height());
    form.show();
    QCOMPARE(label(form)->text(), Long);
    QCOMPARE(button(form)->accessibleName(), Long);
    QVERIFY(form.minimumSizeHint().width() < 160);
    QCOMPARE(button(form)->width(), 160);

    // What is painted is the same as a label that holds the shortened text.
    const QString shown =
        label(form)->fontMetrics().elidedText(Long, Qt::ElideMiddle, label(form)->width());
    QVERIFY(shown != Long);
    const QImage painted = label(form)->grab().toImage();
    label(form)->setText(shown);
    QCOMPARE(label(form)->grab().toImage(), painted);
}

void TestListButtonForm::markupInNamesIsText()
{
    ListButtonForm form;
    form.setSavedFilter("<img src=\"/dev/zero\">", "<h1>A & B</h1>");
    QCOMPARE(label(form)->textFormat(), Qt::PlainText);
    QCOMPARE(label(form)->text(), QString("<h1>A & B</h1>"));
    QCOMPARE(button(form)->toolTip(), QString("<img src=\"/dev/zero\">"));
}

QTEST_MAIN(TestListButtonForm)
#include "widgets_listbuttonform.moc"
