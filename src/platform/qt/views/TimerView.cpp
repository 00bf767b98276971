#include "platform/qt/views/TimerView.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTextDocument>
#include <QTextOption>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/forms/OptionButton.h"
#include "platform/qt/widgets/Bindings.h"
#include "platform/qt/widgets/ViewParts.h"
#include "timer/TimerPage.h"

namespace quillbox {

namespace {

QWidget* MakeClock(FormView& view, TimerPage& page) {
  Label& time = page.labels.Label5;
  Label& date = page.labels.Label8;
  QGroupBox* const frame = MakeFrame(view, page.Frame1);
  auto* const layout = new QHBoxLayout(frame);
  QLabel* const timeLabel = MakeLabel(view, time, QStringLiteral("Current time"));
  timeLabel->setFont(Scaled(DigitFont(timeLabel->font()), 2.2));
  GiveHint(view, time, *timeLabel, QStringLiteral("Click: copy date and time to the clipboard"));
  QLabel* const dateLabel = MakeLabel(view, date, QStringLiteral("Current date"));
  dateLabel->setFont(Scaled(DigitFont(dateLabel->font()), 1.3));
  GiveHint(view, date, *dateLabel, QStringLiteral("Click: copy the date to the clipboard"));
  for (QLabel* label : {timeLabel, dateLabel}) LookLikeLink(*label);
  layout->addWidget(timeLabel);
  layout->addStretch(1);
  layout->addWidget(dateLabel);
  return frame;
}

// One of the three fields, with its unit or colon behind it.
void AddField(FormView& view, QHBoxLayout& row, TextBox& field, const QString& name, Label& unit) {
  QWidget* const edit = MakeField(view, field, name);
  edit->setFont(Scaled(DigitFont(edit->font()), 2));
  const QFontMetrics metrics(edit->font());
  edit->setFixedSize(metrics.horizontalAdvance(QStringLiteral("00")) + metrics.height(),
                     metrics.height() + metrics.height() / 4);
  QLabel* const behind = MakeLabel(view, unit, name + QStringLiteral(": unit"));
  behind->setFont(Scaled(behind->font(), 1.4));
  // The colons blink, with and without blanks.
  const QFontMetrics unitMetrics(behind->font());
  behind->setFixedWidth(std::max(unitMetrics.horizontalAdvance(QStringLiteral(" : ")),
                                 unitMetrics.horizontalAdvance(QStringLiteral("m"))) +
                        unitMetrics.horizontalAdvance(QLatin1Char(' ')));
  row.addWidget(edit);
  row.addWidget(behind);
}

QWidget* MakeSettings(FormView& view, TimerPage& page) {
  QGroupBox* const frame = MakeFrame(view, page.Frame2);
  auto* const layout = new QVBoxLayout(frame);
  auto* const upper = new QHBoxLayout;
  auto* const modes = new QVBoxLayout;
  modes->addStretch(1);
  for (OptionButton* mode : {&page.timer.Option1, &page.timer.Option2}) {
    modes->addWidget(MakeOption(view, *mode));
  }
  modes->addStretch(1);
  upper->addLayout(modes);
  upper->addStretch(1);
  TimerFields& fields = page.fields;
  AddField(view, *upper, fields.Text16, QStringLiteral("Hours"), fields.Label3);
  AddField(view, *upper, fields.Text17, QStringLiteral("Minutes"), fields.Label4);
  AddField(view, *upper, fields.Text14, QStringLiteral("Seconds"), fields.Label6);
  layout->addLayout(upper);

  auto* const buttons = new QHBoxLayout;
  QAbstractButton* const activate = MakeButton(view, page.timer.Command45);
  ReserveWidthFor(*activate, {QStringLiteral("Activate Countdown"), QStringLiteral("Activate Alarm Clock")});
  QAbstractButton* const reset = MakeButton(view, page.timer.Command46);
  ReserveWidthFor(*reset, {QStringLiteral("Reset Countdown to starting value"),
                           QStringLiteral("Set Alarm Clock to next full quarter")});
  buttons->addWidget(activate, 2);
  buttons->addWidget(reset, 3);
  layout->addLayout(buttons);
  return frame;
}

QWidget* MakeMessage(FormView& view, TimerPage& page) {
  TimerMessageText& message = page.message;
  QGroupBox* const frame = MakeFrame(view, page.Frame3);
  auto* const layout = new QVBoxLayout(frame);
  QWidget* const field =
      MakeField(view, message.Text13, QStringLiteral("Message of the timer"),
                QStringLiteral("Your own message; without one the timer says that the time has come."));
  if (auto* const area = qobject_cast<QPlainTextEdit*>(field)) {
    QTextOption option = area->document()->defaultTextOption();
    option.setAlignment(Qt::AlignHCenter);
    area->document()->setDefaultTextOption(option);
    area->setMinimumHeight(4 * area->fontMetrics().lineSpacing());
  }
  layout->addWidget(field, 1);
  auto* const buttons = new QHBoxLayout;
  buttons->addWidget(MakeButton(view, message.Command1, QStringLiteral("Clear message")));
  buttons->addStretch(1);
  buttons->addWidget(MakeButton(view, message.Command42));
  buttons->addWidget(MakeButton(view, message.Command43));
  layout->addLayout(buttons);
  return frame;
}

}  // namespace

QWidget* MakeTimerPage(FormView& view, TimerPage& page) {
  auto* const widget = new QWidget(&view);
  auto* const layout = new QVBoxLayout(widget);
  layout->setContentsMargins(0, 4, 0, 4);
  layout->addWidget(MakeClock(view, page));
  layout->addWidget(MakeSettings(view, page));
  layout->addWidget(MakeMessage(view, page), 1);
  return widget;
}

}  // namespace quillbox
