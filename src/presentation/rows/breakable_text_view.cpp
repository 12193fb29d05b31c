#include "presentation/rows/breakable_text_view.h"

#include "platform/qt/qt_text.h"

#include <QLabel>

namespace tolvo {

namespace {

/// Longer ones are no words, and fit no line of the popover in large type.
constexpr qsizetype longestWord = 16;
constexpr QChar zeroWidthSpace(0x200B);

QString breakable(const QString& text) {
    QString result;
    qsizetype wordLength = 0;
    for (const QChar c : text) {
        wordLength = c.isSpace() ? 0 : wordLength + 1;
        // Never between the two halves of one character.
        if (wordLength > longestWord && !c.isLowSurrogate())
            result += zeroWidthSpace;
        result += c;
    }
    return result;
}

} // namespace

void showBreakable(QLabel& label, std::string_view text, std::string_view accessibilityLabel) {
    const QString whole = toQString(text);
    label.setTextFormat(Qt::PlainText);
    label.setWordWrap(true);
    label.setText(breakable(whole));
    label.setAccessibleName(accessibilityLabel.empty() ? whole : toQString(accessibilityLabel));
    label.setAccessibleDescription(accessibilityLabel.empty() ? QString() : whole);
}

} // namespace tolvo
