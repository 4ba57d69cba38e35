// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// One field of a record as the record view shows it.
#include "widgets/outputDataForm.h"

#include "ui_outputDataForm.h"

#include "model/addresses.h"
#include "model/attachments.h"
#include "model/columns.h"
#include "model/formats.h"
#include "model/subtables.h"
#include "model/values.h"
#include "widgets/buttonmenu.h"
#include "widgets/icons.h"
#include "widgets/imagescaling.h"
#include "widgets/plaintooltip.h"

#include <QContextMenuEvent>
#include <QDesktopServices>
#include <QEvent>
#include <QUrl>

namespace
{

constexpr int UsualLabelWidth = 144;
constexpr int MostLabelWidth = 224;

/// Room for a preview, whatever the shape of the picture.
constexpr QSize LeastImageSize(60, 100);
constexpr QSize MostImageSize(120, 100);

/// A longer text rarely fits on one line of the page.
constexpr int MostLettersOnOneLine = 60;

/// The label's width while its text stands on one line.
int widthOnOneLine(const QLabel &label)
{
    return label.fontMetrics().horizontalAdvance(label.text()) + 2;
}

} // namespace

outputDataForm::outputDataForm(QWidget *parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui::outputDataForm>())
{
    ui->setupUi(this);
    ui->cbData->setAttribute(Qt::WA_TransparentForMouseEvents);
    ui->lbImage->setMinimumSize(LeastImageSize);
    ui->lbImage->setMaximumSize(MostImageSize);
    hideValue();
    ui->pbXView->hide();
    setLabelWidth(UsualLabelWidth);
    alignFirstLines();
    connectButtons();
    ui->leData->installEventFilter(this);
}

outputDataForm::~outputDataForm() = default;

void outputDataForm::connectButtons()
{
    connect(ui->pbViewImage, &QPushButton::clicked, this, &outputDataForm::viewImageBox);
    connect(ui->pbViewPdf, &QPushButton::clicked, this, &outputDataForm::viewPdf);
    connect(ui->pbXView, &QPushButton::clicked, this, &outputDataForm::goToX);
    connect(ui->pbMail, &QPushButton::clicked, this, &outputDataForm::sendMail);
    connect(ui->pbSubTable, &QPushButton::clicked, this, &outputDataForm::callSubTable);
    connect(ui->lbUrl, &QLabel::linkActivated, this, &outputDataForm::linkActivated);
    connect(ui->pbLink, &QPushButton::clicked, this, &outputDataForm::callLink);
}

void outputDataForm::setTitle(bool show, QString label)
{
    if (show) {
        ui->lbTitle->setText(Columns::shownLabel(label));
        setLabelWidth(ui->lbTitle->maximumWidth());
        nameControls();
    }
    ui->lbTitle->setVisible(show);
}

void outputDataForm::setXViewVisible(bool visible)
{
    if (visible) {
        showButton(ui->pbXView, QStringLiteral(":/goIcon"));
    }
    ui->pbXView->setVisible(visible);
}

void outputDataForm::setLinkButtonVisible(bool visible)
{
    if (visible) {
        showButton(ui->pbLink, QStringLiteral(":/linkIcon"));
    }
    ui->pbLink->setVisible(visible);
}

void outputDataForm::setLinkTarget(QString table, int id)
{
    linkTable = std::move(table);
    linkId = id;
}

void outputDataForm::setValue(QString format, QVariant value)
{
    hideValue();
    switch (Formats::kindOf(format)) {
    case Formats::Kind::Bool:
        showYesNo(value);
        break;
    case Formats::Kind::LongString:
        showLongText(value.toString());
        break;
    case Formats::Kind::Money:
        showText(Values::moneyText(value));
        break;
    case Formats::Kind::Image:
        showPicture(value.toString());
        break;
    case Formats::Kind::Pdf:
        showPdf(value.toString());
        break;
    case Formats::Kind::Mail:
        showText(value.toString());
        showButton(ui->pbMail, QStringLiteral(":/mailIcon"));
        break;
    case Formats::Kind::Link:
        linkValue = value.toString();
        setLinkButtonVisible(true);
        break;
    case Formats::Kind::Url:
        showAddress(value.toString());
        break;
    case Formats::Kind::SubTable:
        showButton(ui->pbSubTable, QStringLiteral(":/subTableIcon"));
        break;
    default:
        showText(value.toString());
        break;
    }
    nameControls();
}

void outputDataForm::setImagePreview(bool show, QString path)
{
    if (!show) {
        ui->imageFrame->hide();
        return;
    }
    const bool isOurs = Attachments::isInside(basePath, path);
    ui->lbImage->setPixmap(isOurs ? ImageScaling::recordPreview(basePath + path) : QPixmap());
    PlainToolTip::set(ui->lbImage, path);
    showButton(ui->pbViewImage, QStringLiteral(":/viewAreaIcon"));
    ui->imageFrame->show();
}

int outputDataForm::labelWidthHint() const
{
    return qMin(widthOnOneLine(*ui->lbTitle), MostLabelWidth);
}

void outputDataForm::setLabelWidth(int width)
{
    ui->lbTitle->setFixedWidth(width);
    // A label that does not fit is wrapped, but a long word may still be cut.
    const bool fits = widthOnOneLine(*ui->lbTitle) <= width;
    PlainToolTip::set(ui->lbTitle, fits ? QString() : ui->lbTitle->text());
}

void outputDataForm::viewImageBox()
{
    openAttachment(imagePath);
}

void outputDataForm::viewPdf()
{
    openAttachment(pdfPath);
}

void outputDataForm::goToX()
{
    emit goToList(linkTable, linkId);
}

void outputDataForm::sendMail()
{
    const QUrl address = Addresses::mail(Addresses::throughLatin1(ui->leData->text()));
    if (address.isValid()) {
        QDesktopServices::openUrl(address);
    }
}

void outputDataForm::callSubTable()
{
    emit goToSubList(SubTables::storedName(ownerTable, ui->lbTitle->text(), recordTitle));
}

void outputDataForm::linkActivated(QString link)
{
    const QUrl address = Addresses::web(link);
    if (address.isValid()) {
        QDesktopServices::openUrl(address);
    }
}

void outputDataForm::callLink()
{
    emit goToFilter(linkValue, recordId);
}

void outputDataForm::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        alignFirstLines();
    }
}

void outputDataForm::contextMenuEvent(QContextMenuEvent *event)
{
    if (!ButtonMenu::exec(event->globalPos(), buttons())) {
        QWidget::contextMenuEvent(event); // the page has one of its own
    }
}

bool outputDataForm::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::ContextMenu || watched != ui->leData) {
        return false;
    }
    return ButtonMenu::exec(static_cast<QContextMenuEvent *>(event)->globalPos(), buttons(),
                            ui->leData);
}

/// The buttons that a value may have.
QList<QPushButton *> outputDataForm::buttons() const
{
    return {ui->pbViewImage, ui->pbViewPdf, ui->pbMail, ui->pbXView, ui->pbSubTable, ui->pbLink};
}

/// Back to a form without a value; the button of the linked record belongs to the record, not
/// to the value, and stays as it is.
void outputDataForm::hideValue()
{
    QWidget *const shownByFormat[] = {ui->leData, ui->cbData,     ui->lbUrl,  ui->imageFrame,
                                      ui->pbMail, ui->pbSubTable, ui->pbLink, ui->pbViewPdf};
    for (QWidget *widget : shownByFormat) {
        widget->hide();
    }
}

/// Gives the label, every kind of value and the buttons the same first line.
void outputDataForm::alignFirstLines()
{
    const int lineHeight = ui->pbMail->sizeHint().height();
    ui->leData->setMinimumHeight(lineHeight);
    ui->cbData->setMinimumHeight(lineHeight);
    ui->lbUrl->setMinimumHeight(lineHeight);
    const int above = (lineHeight - ui->lbTitle->fontMetrics().height()) / 2;
    ui->lbTitle->setContentsMargins(0, above, 0, above);
}

void outputDataForm::showText(const QString &text)
{
    ui->leData->showOneLine(text);
    PlainToolTip::set(ui->leData, text);
    ui->leData->show();
}

void outputDataForm::showLongText(const QString &text)
{
    showText(text);
    if (text.size() > MostLettersOnOneLine || text.contains(QLatin1Char('\n'))) {
        ui->leData->showSeveralLines(text);
    }
}

void outputDataForm::showYesNo(const QVariant &value)
{
    ui->cbData->setText(QString());
    ui->cbData->setChecked(Values::isYes(value));
    ui->cbData->show();
}

void outputDataForm::showPicture(const QString &path)
{
    imagePath = path;
    showText(Attachments::fileName(path));
    setImagePreview(true, imagePath);
}

void outputDataForm::showPdf(const QString &path)
{
    pdfPath = path;
    showText(Attachments::fileName(path));
    showButton(ui->pbViewPdf, QStringLiteral(":/pdfIcon"));
}

void outputDataForm::showAddress(const QString &address)
{
    // Markup costs a text document, which most fields of a page never need.
    ui->lbUrl->setTextFormat(Qt::RichText);
    ui->lbUrl->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::LinksAccessibleByMouse |
                                       Qt::LinksAccessibleByKeyboard);
    ui->lbUrl->setText(Addresses::linkMarkup(address));
    PlainToolTip::set(ui->lbUrl, address);
    ui->lbUrl->show();
}

/// Icons are read when a button is first shown: most buttons of a page never are.
void outputDataForm::showButton(QPushButton *button, const QString &iconName)
{
    if (button->icon().isNull()) {
        button->setIcon(Icons::shared(iconName));
    }
    button->show();
}

/// Tells screen readers which field each control belongs to.
void outputDataForm::nameControls()
{
    const QString label = ui->lbTitle->text();
    ui->leData->setValueName(label);
    ui->cbData->setAccessibleName(label);
    ui->lbUrl->setAccessibleName(label + QLatin1Char(' ') + ui->lbUrl->toolTip());
    QPushButton *const named[] = {ui->pbMail, ui->pbViewPdf, ui->pbSubTable, ui->pbLink,
                                  ui->pbXView};
    for (QPushButton *button : named) {
        button->setAccessibleName(label + QLatin1Char(' ') + button->text().trimmed());
    }
    ui->pbViewImage->setAccessibleName(label + QLatin1Char(' ') + ui->pbViewImage->toolTip());

    QWidget *const editors[] = {ui->leData, ui->cbData, ui->lbUrl, ui->pbSubTable, ui->pbLink};
    QWidget *shown = nullptr;
    for (QWidget *editor : editors) {
        shown = shown == nullptr && !editor->isHidden() ? editor : shown;
    }
    // A label with a buddy reads "&" as the mark of a shortcut key and does not paint it.
    ui->lbTitle->setBuddy(label.contains(QLatin1Char('&')) ? nullptr : shown);
}

/// Hands a file over to the desktop's own program for it.
void outputDataForm::openAttachment(const QString &path) const
{
    // Deliberate: the desktop gets the path read anew as Latin-1, so only names of plain ASCII
    // reach their file; what is tested is the path that is handed over.
    const QString base = Addresses::throughLatin1(basePath);
    const QString stored = Addresses::throughLatin1(path);
    if (Attachments::mayBeOpened(base, stored)) {
        QDesktopServices::openUrl(QUrl::fromLocalFile(base + stored));
    }
}
