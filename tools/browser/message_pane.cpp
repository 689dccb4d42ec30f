#include "tools/browser/message_pane.h"

#include "tools/browser/row_view.h"
#include "tools/browser/texts.h"
#include "tools/messages.h"

#include <QtCore/QAbstractTableModel>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QStyle>
#include <QtWidgets/QVBoxLayout>
#include <iterator>

namespace paramdb::browser {

// The kind of a message, and its text.
class MessageModel : public QAbstractTableModel {
public:
    using QAbstractTableModel::QAbstractTableModel;

    [[nodiscard]] std::vector<Message> const& Messages() const { return m_messages; }

    void Clear() {
        beginResetModel();
        m_messages.clear();
        endResetModel();
    }
    void Add(std::vector<Message> messages) {
        if (messages.empty())
            return;
        int const first = rowCount();
        beginInsertRows({}, first, first + static_cast<int>(messages.size()) - 1);
        m_messages.insert(m_messages.end(), std::make_move_iterator(messages.begin()),
                          std::make_move_iterator(messages.end()));
        endInsertRows();
    }

    [[nodiscard]] int rowCount(QModelIndex const& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(m_messages.size());
    }
    [[nodiscard]] int columnCount(QModelIndex const& parent = {}) const override {
        return parent.isValid() ? 0 : 2;
    }
    [[nodiscard]] QVariant data(QModelIndex const& index, int role) const override {
        if (!index.isValid())
            return {};
        Message const& message = m_messages[static_cast<std::size_t>(index.row())];
        bool const is_text = index.column() == 1;
        if (role == Qt::DisplayRole)
            return is_text ? message.text.simplified() : KindWord(message.style);
        if (role == Qt::ToolTipRole)
            return Tip(message.text);
        if (role == Qt::DecorationRole && !is_text)
            return QApplication::style()->standardIcon(KindIcon(message.style));
        return {};
    }
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
            return section == 0 ? QStringLiteral("Kind") : QStringLiteral("Message");
        if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole)
            return static_cast<int>(Qt::AlignVCenter | Qt::AlignLeft);
        return {};
    }

private:
    static QString KindWord(int style) {
        switch (style) {
        case tools::FaultStyle:
            return QStringLiteral("Fault");
        case tools::RefusalStyle:
            return QStringLiteral("Refusal");
        default:
            return QStringLiteral("Note");
        }
    }
    static QStyle::StandardPixmap KindIcon(int style) {
        switch (style) {
        case tools::FaultStyle:
            return QStyle::SP_MessageBoxWarning;
        case tools::RefusalStyle:
            return QStyle::SP_MessageBoxCritical;
        default:
            return QStyle::SP_MessageBoxInformation;
        }
    }

    std::vector<Message> m_messages;
};

MessagePane::MessagePane(QWidget* parent)
    : QWidget(parent), m_model(new MessageModel(this)), m_view(new RowView(QStringLiteral("Messages"))),
      m_more(new QLabel) {
    m_view->setModel(m_model);
    m_view->horizontalHeader()->setStretchLastSection(true);
    m_view->setColumnWidth(0, m_view->fontMetrics().averageCharWidth() * 16);
    m_more->hide();
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_view);
    layout->addWidget(m_more);
    setFocusProxy(m_view);
}

MessagePane::~MessagePane() = default;

void MessagePane::Clear() {
    m_model->Clear();
    m_more->hide();
    m_more->clear();
}

void MessagePane::Add(std::vector<Message> messages) {
    m_model->Add(std::move(messages));
}

void MessagePane::SetTotal(std::uint64_t total) {
    std::uint64_t const shown = m_model->Messages().size();
    m_more->setVisible(total > shown);
    m_more->setText(total > shown ? QStringLiteral("The first of %1 messages").arg(browser::Count(total))
                                  : QString());
}

std::vector<Message> const& MessagePane::Messages() const {
    return m_model->Messages();
}

QString MessagePane::MoreText() const {
    return m_more->text();
}

} // namespace paramdb::browser
