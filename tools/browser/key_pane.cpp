#include "tools/browser/key_pane.h"

#include <paramdb/query/param_instance.h>

#include "tools/browser/texts.h"

#include <QtWidgets/QFormLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

namespace paramdb::browser {
KeyPane::KeyPane(std::function<void(CClavis const&)> on_key, QWidget* parent)
    : QWidget(parent), m_on_key(std::move(on_key)), m_owner([this](UINT message) { OnMessage(message); }),
      m_view(new qt::ListView), m_nice(new QLabel), m_plain(new QLineEdit) {
    m_view->SetList(&m_editor);
    m_view->setAccessibleName(QStringLiteral("Key editor"));
    m_nice->setTextFormat(Qt::PlainText);
    m_nice->setWordWrap(true);
    m_nice->setMinimumHeight(2 * fontMetrics().lineSpacing());
    m_nice->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_nice->setAccessibleName(QStringLiteral("Text of the key"));
    m_plain->setReadOnly(true);
    m_plain->setAccessibleName(QStringLiteral("Numbers of the key"));

    auto* const clear = new QPushButton(QStringLiteral("Empty &key"));
    connect(clear, &QPushButton::clicked, this, [this] {
        SetKey({});
        m_on_key(m_key);
    });
    auto* const form = new QFormLayout;
    form->addRow(QStringLiteral("Text"), m_nice);
    auto* const numbers = new QHBoxLayout;
    numbers->addWidget(m_plain);
    numbers->addWidget(clear);
    auto* const numbers_label = new QLabel(QStringLiteral("&Numbers"));
    numbers_label->setBuddy(m_plain);
    form->addRow(numbers_label, numbers);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_view, 1);
    layout->addLayout(form);
    setFocusProxy(m_view);
}

KeyPane::~KeyPane() {
    m_view->SetList(nullptr);
}

void KeyPane::Clear() {
    m_is_filled = false;
    m_editor.DestroyWindow();
    m_nice->clear();
    m_plain->clear();
}

void KeyPane::Fill() {
    m_editor.Create(&m_owner);
    m_is_filled = true;
    SetKey(m_key);
}

void KeyPane::SetKey(CClavis const& key) {
    m_key = key;
    if (!m_is_filled)
        return;
    m_editor.fill(m_key);
    ShowTexts();
}

QString KeyPane::NiceText() const {
    return m_nice->text();
}

QString KeyPane::PlainText() const {
    return m_plain->text();
}

void KeyPane::OnMessage(UINT message) {
    if (message != WM_PENTADCTRL_SELCHANGED || !m_is_filled)
        return;
    m_key = m_editor.retrieve();
    ShowTexts();
    m_on_key(m_key);
}

void KeyPane::ShowTexts() {
    CQtParamInstance const parameters;
    m_nice->setText(Shown(parameters.FormatClavisTextNice(m_key, false, L"/").GetString()));
    QStringList numbers;
    for (int element = 0; element < Clavis::ElementCount; ++element)
        numbers += QString::number(m_key[element]);
    m_plain->setText(numbers.join(u'/'));
}

} // namespace paramdb::browser
