// The messages of the last load, and of what was asked since.
#pragma once

#include "tools/browser/message_sink.h"

#include <QtWidgets/QWidget>

class QLabel;

namespace paramdb::browser {

class MessageModel;
class RowView;

class MessagePane : public QWidget {
public:
    explicit MessagePane(QWidget* parent = nullptr);
    ~MessagePane() override;

    void Clear();
    void Add(std::vector<Message> messages);
    // How many messages there were in all; those that are not in the list are spoken of.
    void SetTotal(std::uint64_t total);

    [[nodiscard]] std::vector<Message> const& Messages() const;
    [[nodiscard]] RowView& View() noexcept { return *m_view; }
    [[nodiscard]] QString MoreText() const;

private:
    MessageModel* m_model;
    RowView* m_view;
    QLabel* m_more;
};

} // namespace paramdb::browser
