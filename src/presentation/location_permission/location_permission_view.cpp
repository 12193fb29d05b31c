#include "presentation/location_permission/location_permission_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/rows/card_view.h"
#include "presentation/rows/label_view.h"
#include "presentation/rows/style_view.h"
#include "presentation/rows/text_button_view.h"

#include <QLabel>
#include <QVBoxLayout>

namespace tolvo {

LocationPermissionView::LocationPermissionView(QWidget* parent)
    : QWidget(parent),
      title_(makeLabel("", TextStyle::Headline, this)),
      text_(makeLabel("", TextStyle::Caption, this, QPalette::PlaceholderText)),
      button_(new TextButtonView("")) {
    auto* card = new CardView("", this);
    text_->setWordWrap(true);
    card->rows().setSpacing(spacing::item / 2);
    card->rows().addWidget(title_);
    card->rows().addWidget(text_);
    card->rows().addWidget(button_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(card);
    QObject::connect(button_, &QPushButton::clicked, this, [this] { onPrimaryAction(); });
}

void LocationPermissionView::show(const LocationPermissionContent& content) {
    title_->setText(toQString(content.title));
    text_->setText(toQString(content.text));
    button_->setTitle(content.button.value_or(""));
    button_->setVisible(content.button.has_value());
}

} // namespace tolvo
