// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The progress window, the name prompt and the About box.
#include "tests/support/UrlCatcher.h"
#include "widgets/AboutForm.h"
#include "widgets/chooseNameForm.h"
#include "widgets/progressBarForm.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

namespace
{

QLabel *label(const QWidget &dialog, const QString &name)
{
    return dialog.findChild<QLabel *>(name);
}

QPushButton *standardButton(const QWidget &dialog, QDialogButtonBox::StandardButton kind)
{
    return dialog.findChild<QDialogButtonBox *>("buttonBox")->button(kind);
}

} // namespace

class TestDialogs : public QObject
{
    Q_OBJECT

private slots:
    void progressStartsAsDesigned();
    void progressShowsWhatItIsTold();
    void progressTextIsPlain();
    void progressKeepsItsSize();
    void progressCanBeDismissed();
    void heldProgressCannotBeDismissed();
    void codeHidesHeldProgress();
    void promptStartsAsDesigned();
    void promptKeepsItsText();
    void promptIsReadyForTyping();
    void promptAnswers_data();
    void promptAnswers();
    void aboutStartsAsDesigned();
    void aboutShowsWhatItIsTold();
    void aboutLinksAreComplete();
    void aboutLinksOpenOnce_data();
    void aboutLinksOpenOnce();
    void aboutOpensALinkWithTheDesktop();
    void aboutCloses();
};

void TestDialogs::progressStartsAsDesigned()
{
    const progressBarForm form;
    QCOMPARE(form.objectName(), QString("progressBarForm"));
    QCOMPARE(form.size(), QSize(400, 112));
    QCOMPARE(form.windowModality(), Qt::WindowModal);
    QCOMPARE(form.windowTitle(), QString("Form"));
    QVERIFY(!form.isHeld());
    QVERIFY(form.findChild<QLayout *>("gridLayout") != nullptr);
    const QLabel *title = label(form, "lbProgressTitle");
    QCOMPARE(title->text(), QString("Title"));
    QCOMPARE(title->font().pointSize(), 12);
    QCOMPARE(title->font().weight(), 75);
    QCOMPARE(title->alignment(), Qt::AlignCenter);
    QCOMPARE(title->sizePolicy().horizontalPolicy(), QSizePolicy::Preferred);
    QCOMPARE(title->sizePolicy().verticalPolicy(), QSizePolicy::Maximum);
    const auto *bar = form.findChild<QProgressBar *>("progressBar");
    QCOMPARE(bar->minimum(), 0);
    QCOMPARE(bar->maximum(), 100);
    QCOMPARE(bar->value(), 24);
}

void TestDialogs::progressShowsWhatItIsTold()
{
    progressBarForm form;
    form.setProgressValue(66);
    form.setProgressText("Esportazione Libri");
    form.setTitle("Esportazione ");
    QCOMPARE(form.findChild<QProgressBar *>("progressBar")->value(), 66);
    QCOMPARE(label(form, "lbProgressTitle")->text(), QString("Esportazione Libri"));
    QCOMPARE(form.windowTitle(), QString("Esportazione "));
    form.setProgressValue(0);
    QCOMPARE(form.findChild<QProgressBar *>("progressBar")->value(), 0);
}

void TestDialogs::progressTextIsPlain()
{
    progressBarForm form;
    form.setProgressText("<img src=\"/dev/zero\">");
    QCOMPARE(label(form, "lbProgressTitle")->textFormat(), Qt::PlainText);
    QCOMPARE(label(form, "lbProgressTitle")->text(), QString("<img src=\"/dev/zero\">"));
}

void TestDialogs::progressKeepsItsSize()
{
    progressBarForm form;
    const QString longName(300, QLatin1Char('m'));
    form.setProgressText(longName);
    form.show();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    QCOMPARE(form.size(), QSize(400, 112));
    QCOMPARE(label(form, "lbProgressTitle")->text(), longName);
}

void TestDialogs::progressCanBeDismissed()
{
    progressBarForm form;
    form.show();
    QTest::keyClick(&form, Qt::Key_Escape);
    QVERIFY(form.isHidden());
    form.show();
    QVERIFY(form.close());
    QVERIFY(form.isHidden());
}

void TestDialogs::heldProgressCannotBeDismissed()
{
    progressBarForm form;
    QSignalSpy rejected(&form, &QDialog::rejected);
    form.setHeld(true);
    QVERIFY(form.isHeld());
    form.show();
    QTest::keyClick(&form, Qt::Key_Escape);
    QVERIFY(form.isVisible());
    QVERIFY(!form.close());
    QVERIFY(form.isVisible());
    form.reject();
    QVERIFY(form.isVisible());
    QCOMPARE(rejected.count(), 0);
    form.setHeld(false);
    QTest::keyClick(&form, Qt::Key_Escape);
    QVERIFY(form.isHidden());
    QCOMPARE(rejected.count(), 1);
}

void TestDialogs::codeHidesHeldProgress()
{
    progressBarForm form;
    form.setHeld(true);
    form.show();
    form.hide();
    QVERIFY(form.isHidden());
}

void TestDialogs::promptStartsAsDesigned()
{
    const chooseNameForm form;
    QCOMPARE(form.objectName(), QString("chooseNameForm"));
    QCOMPARE(form.size(), QSize(400, 87));
    QCOMPARE(form.windowTitle(), QString());
    QCOMPARE(form.windowModality(), Qt::ApplicationModal);
    QVERIFY(form.findChild<QLayout *>("gridLayout") != nullptr);
    QCOMPARE(label(form, "label")->text(), QString("Chose Name"));
    QCOMPARE(label(form, "label")->font().pointSize(), 12);
    QCOMPARE(label(form, "label")->alignment(), Qt::AlignCenter);
    QCOMPARE(form.getName(), QString());
    const auto *buttons = form.findChild<QDialogButtonBox *>("buttonBox");
    QCOMPARE(buttons->orientation(), Qt::Horizontal);
    QCOMPARE(buttons->standardButtons(), QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
}

void TestDialogs::promptKeepsItsText()
{
    chooseNameForm form;
    form.setName("Non letti");
    QCOMPARE(form.getName(), QString("Non letti"));
    QCOMPARE(form.findChild<QLineEdit *>("leName")->text(), QString("Non letti"));
    form.show();
    form.reject();
    form.show();
    QCOMPARE(form.getName(), QString("Non letti"));
    form.clearName();
    QCOMPARE(form.getName(), QString());
    form.setName(" con spazi ");
    QCOMPARE(form.getName(), QString(" con spazi "));
}

void TestDialogs::promptIsReadyForTyping()
{
    chooseNameForm form;
    form.setName("suggerito");
    form.show();
    QApplication::setActiveWindow(&form);
    auto *name = form.findChild<QLineEdit *>("leName");
    QTRY_VERIFY(name->hasFocus());
    QTest::keyClicks(name, "mio");
    QCOMPARE(form.getName(), QString("mio"));
    form.hide();
    form.setName("suggerito");
    form.show();
    QTest::keyClicks(name, "altro");
    QCOMPARE(form.getName(), QString("altro"));
    QCOMPARE(label(form, "label")->buddy(), static_cast<QWidget *>(name));
}

void TestDialogs::promptAnswers_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<int>("accepted");
    QTest::addColumn<int>("rejected");
    QTest::newRow("OK accepts") << "ok" << 1 << 0;
    QTest::newRow("Return accepts") << "return" << 1 << 0;
    QTest::newRow("Cancel rejects") << "cancel" << 0 << 1;
    QTest::newRow("Esc rejects") << "escape" << 0 << 1;
}

void TestDialogs::promptAnswers()
{
    QFETCH(QString, answer);
    chooseNameForm form;
    QSignalSpy accepted(&form, &QDialog::accepted);
    QSignalSpy rejected(&form, &QDialog::rejected);
    form.setName("nome");
    form.show();
    if (answer == QLatin1String("ok")) {
        QTest::mouseClick(standardButton(form, QDialogButtonBox::Ok), Qt::LeftButton);
    } else if (answer == QLatin1String("return")) {
        QTest::keyClick(form.findChild<QLineEdit *>("leName"), Qt::Key_Return);
    } else if (answer == QLatin1String("cancel")) {
        QTest::mouseClick(standardButton(form, QDialogButtonBox::Cancel), Qt::LeftButton);
    } else {
        QTest::keyClick(&form, Qt::Key_Escape);
    }
    QVERIFY(form.isHidden());
    QTEST(accepted.count(), "accepted");
    QTEST(rejected.count(), "rejected");
    QCOMPARE(form.getName(), QString("nome"));
}

void TestDialogs::aboutStartsAsDesigned()
{
    const AboutForm form;
    QCOMPARE(form.objectName(), QString("AboutForm"));
    QCOMPARE(form.minimumSize(), QSize(300, 300));
    QCOMPARE(form.maximumSize(), QSize(300, 300));
    QCOMPARE(form.windowTitle(), QString("About"));
    QVERIFY(form.findChild<QLayout *>("gridLayout") != nullptr);
    QVERIFY(form.findChild<QLayout *>("verticalLayout") != nullptr);
    QVERIFY(form.findChild<QLayout *>("horizontalLayout") != nullptr);
    const QLabel *title = label(form, "lbTitol");
    QCOMPARE(title->font().family(), QString("DejaVu Sans"));
    QCOMPARE(title->font().pointSize(), 12);
    QVERIFY(title->font().bold());
    QCOMPARE(title->alignment(), Qt::AlignCenter);
    QVERIFY(label(form, "label_5")->hasScaledContents());
    QCOMPARE(label(form, "label")->text(), QString("V"));
    QCOMPARE(label(form, "lbVersion")->text(), QString("Ver"));
    QCOMPARE(label(form, "lbType")->text(), QString());
    QCOMPARE(label(form, "label_3")->text(), QString("Developed by"));
    QCOMPARE(label(form, "label_2")->text(), QString("Developed with:"));
    QCOMPARE(form.findChild<QPushButton *>("pbClose")->text(), QString("Chiudi"));
}

void TestDialogs::aboutShowsWhatItIsTold()
{
    AboutForm form;
    form.setTitle("DB Administration Tool");
    form.setVersion("4.4.5");
    form.setAuthor("<b>Rossi & Figli</b>");
    QCOMPARE(label(form, "lbTitol")->text(), QString("DB Administration Tool"));
    QCOMPARE(label(form, "lbVersion")->text(), QString("4.4.5"));
    QCOMPARE(label(form, "lbAutor")->text(), QString("<b>Rossi & Figli</b>"));
    QCOMPARE(label(form, "lbAutor")->textFormat(), Qt::PlainText);
    form.show();
    QVERIFY(form.layout()->minimumSize().height() <= 300);
}

void TestDialogs::aboutLinksAreComplete()
{
    const AboutForm form;
    const QRegularExpression link("^<a href=\"(https://[^\"<>]+)\">\\1</a>$");
    for (const char *name : {"lbLink", "lbLinkQt"}) {
        const QLabel *shown = label(form, name);
        QVERIFY2(link.match(shown->text()).hasMatch(), qPrintable(shown->text()));
        QVERIFY(shown->openExternalLinks());
        QCOMPARE(shown->textInteractionFlags(), Qt::TextSelectableByMouse |
                                                    Qt::LinksAccessibleByMouse |
                                                    Qt::LinksAccessibleByKeyboard);
    }
    QCOMPARE(label(form, "lbLinkQt")->text(),
             QString("<a href=\"https://www.qt.io/\">https://www.qt.io/</a>"));
}

void TestDialogs::aboutLinksOpenOnce_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("the developer's site") << "lbLink";
    QTest::newRow("the toolkit's site") << "lbLinkQt";
}

void TestDialogs::aboutLinksOpenOnce()
{
    QFETCH(QString, name);
    UrlCatcher catcher;
    AboutForm form;
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    QLabel *link = label(form, name);
    QTest::mouseClick(link, Qt::LeftButton, {}, link->rect().center());
    QCOMPARE(catcher.urls().size(), 1);
    QVERIFY(link->text().contains(catcher.urls().first().toString()));
}

void TestDialogs::aboutOpensALinkWithTheDesktop()
{
    UrlCatcher catcher;
    AboutForm form;
    form.linkActivated("https://example.org/pagina?a=1&b=2");
    QCOMPARE(catcher.urls(), QList<QUrl>{QUrl("https://example.org/pagina?a=1&b=2")});
    emit label(form, "lbLink")->linkActivated("https://example.org/uno");
    emit label(form, "lbLinkQt")->linkActivated("https://example.org/due");
    QCOMPARE(catcher.urls().size(), 3);
}

void TestDialogs::aboutCloses()
{
    AboutForm form;
    form.show();
    QTest::mouseClick(form.findChild<QPushButton *>("pbClose"), Qt::LeftButton);
    QVERIFY(form.isHidden());
}

QTEST_MAIN(TestDialogs)
#include "widgets_dialogs.moc"
