// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// One field of a record to be entered, or to be compared with by a filter.
#include "widgets/inputDataForm.h"

#include "ui_inputDataForm.h"

#include "model/columns.h"
#include "model/markers.h"
#include "model/values.h"
#include "widgets/ImageBox.h"
#include "widgets/icons.h"
#include "widgets/longtext.h"
#include "widgets/plaintooltip.h"
#include "widgets/spokenlabel.h"
#include "widgets/textdrops.h"
#include "widgets/wheelguard.h"

#include <QMessageBox>
#include <QRegularExpressionValidator>
#include <QScopedValueRollback>

#include <limits>

namespace
{

constexpr int UsualLabelWidth = 144;
constexpr int MostLabelWidth = 224;
constexpr int LongTextLines = 5;
constexpr int NumberLength = 20; // in digits

/// The text of a several-line editor. QPlainTextEdit's own conversion would turn non-breaking
/// blanks into plain ones.
QString wholeText(const QPlainTextEdit *editor)
{
    QString text = editor->document()->toRawText();
    text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    return text.replace(QChar::LineSeparator, QLatin1Char('\n'));
}

} // namespace

inputDataForm::inputDataForm(QWidget *parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui::inputDataForm>())
    , messageBox(new QMessageBox(this))
{
    ui->setupUi(this);
    ui->leData->setMaxLength(std::numeric_limits<int>::max());
    ui->leData->installEventFilter(this);
    letFilesPass(ui->leData);
    letFilesPass(ui->teData->viewport());
    ui->lbRequired->setForegroundRole(QPalette::Highlight);
    ui->activeMark->setBackgroundRole(QPalette::Highlight);
    ui->lbMissing->setAccessibleName(QStringLiteral("Il file non c'è"));
    ui->lbMissing->setToolTip(QStringLiteral("Il file non c'è"));
    messageBox->setIcon(QMessageBox::Warning);
    messageBox->setTextFormat(Qt::PlainText);
    messageBox->setWindowTitle(QStringLiteral("DB Administration Tool"));

    WheelGuard::protect(ui->sbNum);
    WheelGuard::protect(ui->deData);
    WheelGuard::protect(ui->cboxData);
    WheelGuard::protect(ui->teData, ui->teData->viewport());
    setFilterRole(false);
    showEditor(Editor::Line);
    setLabelWidth(UsualLabelWidth);
    alignFirstLines();
    connectEditors();
    connectConditions();
}

inputDataForm::~inputDataForm() = default;

void inputDataForm::connectEditors()
{
    connect(ui->pbViewImage, &QPushButton::clicked, this, &inputDataForm::viewImageBox);
    connect(ui->pbViewPdf, &QPushButton::clicked, this, &inputDataForm::addPdf);
    connect(ui->pbPlus, &QPushButton::clicked, this, &inputDataForm::intPlus);
    connect(ui->pbMinus, &QPushButton::clicked, this, &inputDataForm::intMinus);

    const auto indexChanged = QOverload<int>::of(&QComboBox::currentIndexChanged);
    const auto numberChanged = QOverload<int>::of(&QSpinBox::valueChanged);
    connect(ui->cbData, &QCheckBox::toggled, this, &inputDataForm::activated);
    connect(ui->cboxData, indexChanged, this, &inputDataForm::cbActivated);
    connect(ui->deData, &QDateEdit::dateChanged, this, &inputDataForm::activated);
    connect(ui->leData, &QLineEdit::textChanged, this, &inputDataForm::activated);
    connect(ui->sbNum, numberChanged, this, &inputDataForm::activated);

    // After those above: who hears of a change finds everything in place.
    connect(ui->teData, &QPlainTextEdit::textChanged, this, &inputDataForm::copyToLine);
    connect(ui->leData, &QLineEdit::textChanged, this, &inputDataForm::copyToLongText);
    connect(ui->cbData, &QCheckBox::toggled, this, &inputDataForm::noteChange);
    connect(ui->cboxData, indexChanged, this, &inputDataForm::noteChange);
    connect(ui->deData, &QDateEdit::dateChanged, this, &inputDataForm::noteChange);
    connect(ui->leData, &QLineEdit::textChanged, this, &inputDataForm::noteChange);
    connect(ui->sbNum, numberChanged, this, &inputDataForm::noteChange);
}

void inputDataForm::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        alignFirstLines();
    }
}

/// Gives the label and every kind of editor the same first line.
void inputDataForm::alignFirstLines()
{
    const int lineHeight =
        qMax(ui->pbViewImage->sizeHint().height(), ui->leData->sizeHint().height());
    QWidget *const lines[] = {ui->leData, ui->cbData, ui->sbNum, ui->deData, ui->cboxData};
    for (QWidget *line : lines) {
        line->setMinimumHeight(lineHeight);
    }
    const QFontMetrics metrics = ui->lbTitle->fontMetrics();
    const int above = (lineHeight - metrics.height()) / 2;
    ui->lbTitle->setContentsMargins(0, above, 0, above);
    ui->lbRequired->setContentsMargins(0, above, 0, 0);
    ui->lbRequired->setFixedWidth(metrics.horizontalAdvance(QLatin1Char('*')) + 2);
    ui->lbMissing->setMinimumHeight(lineHeight);
    ui->lbType->setMinimumHeight(lineHeight);
    ui->teData->setFixedHeight(LongTextLines * ui->teData->fontMetrics().lineSpacing() +
                               lineHeight - metrics.height() + 2 * ui->teData->frameWidth());
}

void inputDataForm::setLabel(const QString &label)
{
    ui->lbTitle->setText(label);
    setLabelWidth(ui->lbTitle->maximumWidth());
    nameControls();
}

QString inputDataForm::label() const
{
    return ui->lbTitle->text();
}

void inputDataForm::setColumnName(const QString &name)
{
    column = name;
    nameControls();
}

int inputDataForm::labelWidthHint() const
{
    const QLabel *title = ui->lbTitle;
    return qMin(title->fontMetrics().horizontalAdvance(title->text()) + 2, MostLabelWidth);
}

void inputDataForm::setLabelWidth(int width)
{
    ui->lbTitle->setFixedWidth(width);
    // A label that does not fit is wrapped, but a long word may still be cut.
    PlainToolTip::set(ui->lbTitle, labelWidthHint() <= width ? QString() : label());
}

/// Tells people and screen readers which field each control belongs to, and whether it must be
/// filled.
void inputDataForm::nameControls()
{
    const bool isRequired = Columns::isRequired(column) && !isCondition;
    ui->lbRequired->setText(isRequired ? QStringLiteral("*") : QString());
    QWidget *const editors[] = {ui->leData,   ui->teData, ui->cbData,
                                ui->cboxData, ui->sbNum,  ui->deData};
    for (QWidget *control : editors) {
        control->setAccessibleName(label());
    }
    describeEditor();
    if (editor() == ui->cboxData) {
        setSpokenLabel(ui->cboxData, label());
    }
    QPushButton *const buttons[] = {ui->pbPlus,     ui->pbMinus, ui->pbViewImage, ui->pbViewPdf,
                                    ui->pbEqual,    ui->pbDiff,  ui->pbMajor,     ui->pbMinor,
                                    ui->pbNoFilter, ui->pbAnd,   ui->pbOr};
    for (QPushButton *button : buttons) {
        button->setAccessibleName(label() + QLatin1Char(' ') + button->toolTip());
    }
    // A label with a buddy reads "&" as the mark of a shortcut key and does not paint it.
    ui->lbTitle->setBuddy(label().contains(QLatin1Char('&')) ? nullptr : editor());
}

/// Tells screen readers what the asterisk, the mark of a condition in force and that of a missing
/// file tell the eye.
void inputDataForm::describeEditor()
{
    QStringList states;
    if (Columns::isRequired(column) && !isCondition) {
        states.append(QStringLiteral("obbligatorio"));
    }
    if (isCondition && active) {
        states.append(QStringLiteral("nel filtro"));
    }
    if (editorKind == Editor::File && !ui->lbMissing->isHidden()) {
        states.append(ui->lbMissing->accessibleName());
    }
    const QString description = states.join(QLatin1String(", "));
    QWidget *const editors[] = {ui->leData,   ui->teData, ui->cbData,
                                ui->cboxData, ui->sbNum,  ui->deData};
    for (QWidget *control : editors) {
        if (control->accessibleDescription() != description) {
            control->setAccessibleDescription(description);
        }
    }
}

QWidget *inputDataForm::editor() const
{
    switch (editorKind) {
    case Editor::LongText:
        return ui->teData;
    case Editor::Whole:
        return ui->sbNum;
    case Editor::YesNo:
        return ui->cbData;
    case Editor::Date:
        return ui->deData;
    case Editor::Link:
    case Editor::Reference:
        return ui->cboxData;
    case Editor::None:
        return nullptr;
    default:
        return ui->leData;
    }
}

void inputDataForm::focusEditor()
{
    if (editor() != nullptr) {
        editor()->setFocus(Qt::OtherFocusReason);
    }
}

void inputDataForm::setValue(const QString &format, const QVariant &value)
{
    const QScopedValueRollback<bool> guard(isFilling, true);
    formatName = format;
    kind = Formats::kindOf(format);
    stored = value.toString();
    showEditor(editorFor(format));
    fillEditor(value);
    isChanged = false;
    followsLink = false;
}

void inputDataForm::setChoices(const QVector<QPair<int, QString>> &choices)
{
    const QScopedValueRollback<bool> guard(isFilling, true);
    showEditor(Editor::Reference);
    ui->cboxData->setRecords(choices);
}

void inputDataForm::setReferenceValue(const QVariant &value)
{
    const QScopedValueRollback<bool> guard(isFilling, true);
    stored = value.toString();
    showEditor(Editor::Reference);
    ui->cboxData->chooseId(Values::leadingWhole(stored));
    isChanged = false;
}

int inputDataForm::chosenId() const
{
    return ui->cboxData->chosenId();
}

void inputDataForm::setLinkChoices(const QStringList &lines)
{
    const QScopedValueRollback<bool> guard(isFilling, true);
    ui->cboxData->setLines(lines);
}

inputDataForm::Editor inputDataForm::editorFor(const QString &format) const
{
    const bool isReference = Columns::isReference(column) && column.contains(Markers::Reference);
    if (editorKind == Editor::Reference || isReference || format.contains(Markers::Reference)) {
        return Editor::Reference;
    }
    switch (kind) {
    case Formats::Kind::LongString:
        // The folder of a record's attachments is one line, and so is what texts must contain.
        return isCondition || Columns::isSystemLabel(Columns::label(column)) ? Editor::Line
                                                                             : Editor::LongText;
    case Formats::Kind::Integer:
        return Editor::Whole;
    case Formats::Kind::Real:
    case Formats::Kind::Money:
        return Editor::Number;
    case Formats::Kind::Bool:
        return Editor::YesNo;
    case Formats::Kind::Date:
        return Editor::Date;
    case Formats::Kind::Image:
    case Formats::Kind::Pdf:
        return Editor::File;
    case Formats::Kind::Link:
        return Editor::Link;
    case Formats::Kind::SubTable:
        return Editor::None;
    default:
        return Editor::Line;
    }
}

void inputDataForm::showEditor(Editor shown)
{
    editorKind = shown;
    QWidget *const editors[] = {ui->leData,   ui->teData, ui->cbData,
                                ui->cboxData, ui->sbNum,  ui->deData};
    for (QWidget *control : editors) {
        control->setVisible(control == editor());
    }
    const bool isPicture = kind == Formats::Kind::Image && shown == Editor::File;
    ui->buttonFrame->setVisible(shown == Editor::Whole);
    ui->lbType->setVisible(kind == Formats::Kind::Money && shown == Editor::Number);
    ui->pbViewImage->setVisible(isPicture);
    ui->pbViewPdf->setVisible(shown == Editor::File && !isPicture);
    ui->lbMissing->hide();
    ui->lbPreview->hide();

    // The hidden copy of a long text is not laid out: that takes 200 ms a key for a text of 1 MB.
    ui->leData->setEchoMode(shown == Editor::LongText ? QLineEdit::NoEcho : QLineEdit::Normal);
    ui->leData->setReadOnly(shown == Editor::File);
    ui->leData->setAcceptDrops(shown != Editor::File); // the whole field takes dropped files
    setAcceptDrops(shown == Editor::File);
    ui->leData->setPlaceholderText(shown != Editor::File ? QString()
                                   : isPicture ? QStringLiteral("Trascina o incolla un'immagine")
                                               : QStringLiteral("Trascina un PDF"));
    limitToNumbers(shown == Editor::Number);
    if (isPicture) {
        ui->pbViewImage->setIcon(Icons::shared(QStringLiteral(":/viewAreaIcon")));
        createImageBox();
    } else if (shown == Editor::File) {
        ui->pbViewPdf->setIcon(Icons::shared(QStringLiteral(":/pdfIcon")));
    }
    nameControls();
}

/// Keeps letters out of leData and makes it as wide as numbers need.
void inputDataForm::limitToNumbers(bool on)
{
    static const QRegularExpression numberCharacters(QStringLiteral("[-+0-9 .,]*"));
    const int digit = ui->leData->fontMetrics().horizontalAdvance(QLatin1Char('0'));
    ui->leData->setMaximumWidth(on ? NumberLength * digit : QWIDGETSIZE_MAX);
    delete ui->leData->validator();
    if (on) {
        ui->leData->setValidator(new QRegularExpressionValidator(numberCharacters, ui->leData));
    }
}

void inputDataForm::fillEditor(const QVariant &value)
{
    switch (editorKind) {
    case Editor::LongText:
        ui->teData->setPlainText(stored);
        break;
    case Editor::Number:
        ui->lbType->setText(QStringLiteral("€"));
        showLine(kind == Formats::Kind::Money && !stored.isEmpty()
                     ? Values::twoDecimals(value.toDouble())
                     : stored);
        break;
    case Editor::Whole:
        ui->sbNum->setValue(stored.toInt());
        break;
    case Editor::YesNo:
        ui->cbData->setChecked(stored.compare(Values::YesText, Qt::CaseInsensitive) == 0);
        break;
    case Editor::Date:
        ui->deData->setChosenDate(Values::date(stored));
        break;
    case Editor::Link:
        ui->cboxData->chooseLine(stored);
        break;
    case Editor::Reference:
        ui->cboxData->chooseId(Values::leadingWhole(stored));
        break;
    case Editor::File:
        imagePath = stored;
        showLine(stored);
        showAttachment();
        break;
    case Editor::None:
        break;
    default:
        showLine(stored);
        break;
    }
}

/// Shows the beginning of a text that is longer than the editor.
void inputDataForm::showLine(const QString &text)
{
    ui->leData->setText(text);
    ui->leData->home(false);
}

/// leData follows the several-line editor, so that a long text has the same change signals and
/// is read in the same place as every other text.
void inputDataForm::copyToLine()
{
    const QString text = wholeText(ui->teData);
    ui->teData->setWordWrapMode(LongText::wrapMode(text));
    ui->leData->setText(text);
}

void inputDataForm::copyToLongText()
{
    if (editorKind == Editor::LongText && ui->leData->text() != wholeText(ui->teData)) {
        ui->teData->setPlainText(ui->leData->text());
    }
}

void inputDataForm::noteChange()
{
    if (isFilling) {
        return;
    }
    isChanged = true;
    followsLink = false;
    emit touched();
}
