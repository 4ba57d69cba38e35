// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The list of records, with a word of its own while it is empty.
#include "widgets/RecordListWidget.h"

#include <QPainter>
#include <QSignalBlocker>

namespace
{

constexpr int Inset = 16;
constexpr int GapBelowText = 12;
constexpr int GapBelowHint = 6;
constexpr double HintScale = 0.85;

/// A line that holds nothing but its text. The toolkit's own keeps a list of whatever may be
/// known of it, even if that is a text only.
class Line : public QListWidgetItem
{
public:
    explicit Line(const QString &text)
        : ownText(text)
    {
    }
    QListWidgetItem *clone() const override { return new Line(*this); }
    QVariant data(int role) const override
    {
        return isText(role) ? QVariant(ownText) : QListWidgetItem::data(role);
    }
    void setData(int role, const QVariant &value) override
    {
        if (isText(role)) {
            ownText = value.toString();
        }
        // Tells the list of the change.
        QListWidgetItem::setData(role, value);
    }

private:
    static bool isText(int role) { return role == Qt::DisplayRole || role == Qt::EditRole; }

    QString ownText;
};

/// Emits a signal about `lines` lines from `first` on, as the model itself does for one.
void tellOf(QAbstractItemModel &model, const char *signal, int first, int lines)
{
    QMetaObject::invokeMethod(&model, signal, Qt::DirectConnection,
                              Q_ARG(QModelIndex, QModelIndex()), Q_ARG(int, first),
                              Q_ARG(int, first + lines - 1));
}

/// One wrapped, centred piece of the placeholder.
struct Paragraph {
    QString text;
    QFont font;
    int height = 0;
    int gap = 0;
};

constexpr int Flags = Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap;

Paragraph paragraph(const QString &text, const QFont &font, int width, int gap)
{
    const QRect room(0, 0, width, QWIDGETSIZE_MAX);
    return {text, font, QFontMetrics(font).boundingRect(room, Flags, text).height(), gap};
}

QFont hintFont(QFont font)
{
    if (font.pointSizeF() > 0) {
        font.setPointSizeF(font.pointSizeF() * HintScale);
    } else {
        font.setPixelSize(qRound(font.pixelSize() * HintScale));
    }
    return font;
}

} // namespace

RecordListWidget::RecordListWidget(QWidget *parent)
    : QListWidget(parent)
{
    const auto describe = [this]() { describePlaceholder(); };
    connect(model(), &QAbstractItemModel::rowsInserted, this, describe);
    connect(model(), &QAbstractItemModel::rowsRemoved, this, describe);
    connect(model(), &QAbstractItemModel::modelReset, this, describe);
}

RecordListWidget::~RecordListWidget()
{
    // The base class takes the lines away when the members here are gone already.
    disconnect(model(), nullptr, this, nullptr);
}

void RecordListWidget::addLines(const QStringList &texts)
{
    if (texts.isEmpty()) {
        return;
    }
    const int first = count();
    tellOf(*model(), "rowsAboutToBeInserted", first, texts.size());
    {
        // Otherwise each line would be told of for itself.
        const QSignalBlocker quiet(model());
        for (const QString &text : texts) {
            addItem(new Line(text));
        }
    }
    tellOf(*model(), "rowsInserted", first, texts.size());
}

void RecordListWidget::setPlaceholder(const QString &text, const QStringList &hints)
{
    placeholderText = text;
    placeholderHints = hints;
    describePlaceholder();
    viewport()->update();
}

void RecordListWidget::describePlaceholder()
{
    const QStringList all = QStringList(placeholderText) + placeholderHints;
    const QString description = count() == 0 ? all.join(QLatin1Char('\n')) : QString();
    if (description != accessibleDescription()) {
        setAccessibleDescription(description);
    }
}

void RecordListWidget::paintEvent(QPaintEvent *event)
{
    QListWidget::paintEvent(event);
    if (count() == 0 && !placeholderText.isEmpty()) {
        paintPlaceholder();
    }
}

void RecordListWidget::paintPlaceholder()
{
    const QRect room = viewport()->rect().adjusted(Inset, 0, -Inset, 0);
    QVector<Paragraph> paragraphs = {
        paragraph(placeholderText, font(), room.width(), GapBelowText)};
    for (const QString &hint : qAsConst(placeholderHints)) {
        paragraphs.append(paragraph(hint, hintFont(font()), room.width(), GapBelowHint));
    }
    paragraphs.last().gap = 0;
    int height = 0;
    for (const Paragraph &part : qAsConst(paragraphs)) {
        height += part.height + part.gap;
    }

    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    int top = qMax(Inset, (room.height() - height) / 2);
    for (const Paragraph &part : qAsConst(paragraphs)) {
        painter.setFont(part.font);
        painter.drawText(QRect(room.left(), top, room.width(), part.height), Flags, part.text);
        top += part.height + part.gap;
    }
}
