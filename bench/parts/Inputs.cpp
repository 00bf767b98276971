// What a person's input costs: menu, picks, deletes, the calculator.
#include <array>
#include <charconv>
#include <cstdlib>

#include "base/NumberText.h"
#include "parts/Beside.h"

namespace quillbox::bench {
namespace {

void BuildMenu(benchmark::State& state) {
  BenchProgram program;
  program.Fill(100, static_cast<std::size_t>(state.range(0)));
  for (int entry = 0; entry < 50; ++entry) {
    Text name = u"An entry";
    program.program.pad.AddEntry1(name, program.NewText(100), 0);
  }
  for (auto _ : state) {
    program.program.menu.AktualisiereContextMnu();
    program.program.menu.AktualisiereContextMnu2();
  }
}
BENCHMARK(BuildMenu)->Arg(100)->Arg(32000);

// The third entry of the menu goes to the clipboard, and the list to the disk.
void PickFromMenu(benchmark::State& state) {
  BenchProgram program;
  program.Fill(100, 100);
  int wrong = 0;
  Beside beside(state);
  for (auto _ : state) {
    const Text expected = program.program.clip.ClipEntries(2).Get();
    program.program.menu.AktualisiereContextMnu();
    beside.Ours([&] { program.dispatcher.Dispatch(program.program.menu.mnuClip[2].Click); });
    program.AwaitDisk();
    const std::string bytes = BareRead(program.File("ClipData.qbx"));
    beside.Bare([&] { BareWrite(program.File("bare"), bytes); });
    wrong += program.world.clipboard.Content() != expected;
  }
  if (wrong > 0) state.SkipWithError("the clipboard holds another text");
}
BENCHMARK(PickFromMenu)->UseManualTime()->Iterations(60);

void DeleteAllButOne(benchmark::State& state) {
  int renames = 0;
  int rounds = 0;
  for (auto _ : state) {
    BenchProgram program;
    program.Fill(100, 100);
    ListBox& list = program.program.clip.List2;
    program.dispatcher.Dispatch([&] {
      for (int row = 1; row < 100; ++row) list.SetSelected(row, true);
      list.SetSelected(0, false);
    });
    const int before = program.calls->renames;
    state.SetIterationTime(
        Seconds([&] { program.dispatcher.Dispatch(program.program.clipPage.Command003.Click); }));
    renames += program.calls->renames - before;
    ++rounds;
    if (list.GetListCount() != 1) state.SkipWithError("rows are left");
  }
  state.counters["writes"] = static_cast<double>(renames) / rounds;
}
BENCHMARK(DeleteAllButOne)->UseManualTime()->Iterations(5);

// One key in find over 100 entries of 32000 characters: no entry has the word, and each key changes all of
// it, so that every text is searched whole. The texts are English, then with an accent in each word, then
// Russian.
void FindKey(benchmark::State& state) {
  constexpr TextView kProse[] = {u"The rest of the letter tells another tale entirely. ",
                                 u"Één brief über été, señor Ångström façade Ælfrédé. ",
                                 u"Остальная часть письма рассказывает другую историю. "};
  constexpr TextView kWords[2][3] = {{u"letters", u"étes", u"письмом"}, {u"tales", u"señores", u"частью"}};
  BenchProgram program;
  const auto kind = static_cast<std::size_t>(state.range(0));
  for (int row = 0; row < 100; ++row) {
    Text text = Decimal(row);
    while (text.size() < 32000) text += kProse[kind];
    program.Copy(text.substr(0, 32000));
    program.Tick();
  }
  program.program.form.Show();
  program.program.form.PersonFind();
  TextBox& field = program.program.clipPage.find.field;
  std::size_t at = 0;
  for (auto _ : state) field.PersonSetText(Text(kWords[at++ % 2][kind]));
  if (program.program.clip.List2.ShownCount() > 0) state.SkipWithError("that word was there");
}
BENCHMARK(FindKey)->Arg(0)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

// Keys 1 2 , 5 + 3 = on the keypad; one iteration is one key.
void CalcKey(benchmark::State& state) {
  BenchProgram program;
  std::array<CommandButton*, 7> keys{};
  const std::array<TextView, 7> captions = {u"1", u"2", u",", u"5", u"+", u"3", u"="};
  program.program.window.SSTab1.SetTab(static_cast<int>(Page::Calc));
  for (Control* const control : program.program.form.Controls()) {
    auto* const button = dynamic_cast<CommandButton*>(control);
    for (std::size_t at = 0; button && at < keys.size(); ++at)
      if (button->GetCaption() == captions[at] && !keys[at]) keys[at] = button;
  }
  for (const CommandButton* key : keys)
    if (!key) return state.SkipWithError("a key is missing");
  program.program.form.Show();
  std::size_t at = 0;
  for (auto _ : state) {
    keys[at]->PersonClick();
    at = (at + 1) % keys.size();
  }
  // The round that was begun is ended: the sum must stand there.
  for (; at % keys.size() != 0; ++at) keys[at]->PersonClick();
  const auto* const display = dynamic_cast<TextBox*>(program.program.form.Find("Text7"));
  if (!display || display->GetText() != u"15.5") state.SkipWithError("a wrong sum");
}
BENCHMARK(CalcKey);

constexpr std::array<double, 6> kNumbers = {0,        12.5,          3.14159265358979,
                                            -1.0 / 3, 6.02214076e23, 123456789012345};

void NumberToText(benchmark::State& state) {
  std::size_t at = 0;
  for (auto _ : state) benchmark::DoNotOptimize(MakeTextFromNumber(kNumbers[at++ % kNumbers.size()]).data());
}
BENCHMARK(NumberToText);

void NumberToTextStd(benchmark::State& state) {
  std::size_t at = 0;
  for (auto _ : state) {
    char text[64];
    benchmark::DoNotOptimize(std::to_chars(text, text + sizeof text, kNumbers[at++ % kNumbers.size()],
                                           std::chars_format::general, 15));
  }
}
BENCHMARK(NumberToTextStd);

void TextToNumber(benchmark::State& state) {
  std::array<Text, kNumbers.size()> texts;
  for (std::size_t at = 0; at < texts.size(); ++at) texts[at] = MakeTextFromNumber(kNumbers[at]);
  std::size_t at = 0;
  for (auto _ : state) benchmark::DoNotOptimize(GetNumberFromText(texts[at++ % texts.size()]));
}
BENCHMARK(TextToNumber);

void TextToNumberC(benchmark::State& state) {
  constexpr std::array<const char*, 6> texts = {
      "0", "12.5", "3.14159265358979", "-0.333333333333333", "6.02214076E+23", "123456789012345"};
  std::size_t at = 0;
  for (auto _ : state) benchmark::DoNotOptimize(std::strtod(texts[at++ % texts.size()], nullptr));
}
BENCHMARK(TextToNumberC);

}  // namespace
}  // namespace quillbox::bench

BENCHMARK_MAIN();
