#include "hosts/libreoffice/dialogs/in_office/SampleForm.h"

namespace tolvane::libreoffice {

SampleForm::SampleForm() : Form("Sample", "Every Kind of Control") {
  Fill();
  LayOut();
  Handle();
  SetDefaultButton(cmdOK);
  SetCancelButton(cmdCancel);
}

void SampleForm::Fill() {
  txtName.SetText("Groceries");
  for (const char* category : {"Food", "Housing", "Leisure & Travel"}) cboCategory.AddItem(category);
  cboCategory.SetListIndex(0);
  for (const char* payee : {"Baker", "Butcher", "Market"}) cboPayee.AddItem(payee);
  cboPayee.SetText("Corner shop");
  txtCopies.SetText("1");
  txtCopies.SetLocked(true);
  chkNotes.SetValue(true);
  txtNotes.SetMultiLine(true);
  txtNotes.SetText("Two lines\nof notes");
  optAll.SetValue(true);
  optByDate.SetValue(true);
  barBudget.SetBackColour(host::Colour::Rgb(0x4C, 0xAF, 0x50));
  barBudget.SetToolTip("Two thirds are left");
  lvwItems.SetColumns({{"Item", 18}, {"Amount", 10}, {"Remarks", 0}});
  for (int i = 1; i <= 12; ++i) {
    const std::string number = std::to_string(i);
    lvwItems.Add({"k" + number, "Item " + number, {number + "0.00", "Remark " + number}});
  }
  lvwItems.Select(1);
  std::string report;
  for (int i = 1; i <= 20; ++i) report += "Line " + std::to_string(i) + " of the report\n";
  rptReport.SetText(report);
  rptReport.ScrollTo(4);
  lnkMore.SetLink(true);
  tmrTick.SetInterval(std::chrono::milliseconds(30));
}

void SampleForm::LayOut() {
  using host::Cell;
  using host::Column;
  using host::Group;
  using host::Row;
  using host::Stretch;
  SetLayout(Column({
      Row({
          Column({
                     Row({lblName, txtName}),
                     Row({lblCategory, cboCategory}),
                     Row({lblPayee, cboPayee}),
                     Row({lblCopies, Cell(txtCopies).Wide(5), spnCopies, Stretch()}),
                     Row({lblBudget, barBudget}),
                 })
              .Stretching(),
          Column({
              Row({Group("Show", {optAll, optOpen}).Stretching(),
                   Group("Order", {optByDate, optByAmount}).Stretching()}),
              chkNotes,
              Cell(txtNotes).Wide(28).High(2),
          }),
      }),
      Cell(lvwItems).High(5).Stretching(),
      Cell(rptReport).Wide(50).High(4),
      Row({lblStatus, Stretch(), lnkMore}),
      Row({cmdAsk, Stretch(), cmdOK, cmdCancel}),
  }));
}

void SampleForm::Happened(const std::string& what) {
  events.push_back(what);
  lblStatus.SetPlainCaption(what);
}

void SampleForm::Handle() {
  txtName.OnChange = [this] {
    txtName.SetBackColour(txtName.Text().empty() ? host::kInvalidMark : host::Colour::Window());
    Happened("name " + txtName.Text());
  };
  txtName.OnKeyDown = [this](host::Key key) { Happened("name key " + std::to_string(static_cast<int>(key))); };
  cboCategory.OnClick = [this] { Happened("category " + cboCategory.Text()); };
  cboPayee.OnClick = [this] { Happened("payee picked " + cboPayee.Text()); };
  cboPayee.OnChange = [this] { Happened("payee typed " + cboPayee.Text()); };
  const auto count = [this] {
    txtCopies.SetText(std::to_string(spnCopies.Value()));
    Happened("copies " + txtCopies.Text());
  };
  spnCopies.OnUp = spnCopies.OnDown = count;
  chkNotes.OnClick = [this] {
    txtNotes.SetEnabled(chkNotes.Value());
    Happened(chkNotes.Value() ? "with notes" : "without notes");
  };
  txtNotes.OnChange = [this] { Happened("notes " + txtNotes.Text()); };
  for (host::OptionButton* const option : {&optAll, &optOpen, &optByDate, &optByAmount}) {
    option->OnClick = [this, option] { Happened("option " + option->Name()); };
  }
  lvwItems.OnItemClick = [this](int index) { Happened("item " + lvwItems.Item(index).text); };
  lvwItems.OnDoubleClick = [this] { Happened("item opened"); };
  lvwItems.OnKeyDown = [this](host::Key key) {
    if (key == host::Key::Delete && lvwItems.SelectedIndex() != -1) lvwItems.Remove(lvwItems.SelectedIndex());
    Happened("item key " + std::to_string(static_cast<int>(key)));
  };
  lvwItems.OnAfterLabelEdit = [this](bool& cancel, const std::optional<std::string>& text) {
    cancel = text.has_value() && text->empty();
    Happened("item label " + text.value_or("given up"));
  };
  lnkMore.OnClick = [this] { Happened("more"); };
  cmdAsk.OnClick = [this] {
    Happened("ask");
    if (onAsk) onAsk();
  };
  cmdOK.OnClick = [this] {
    Happened("ok");
    Hide();
  };
  cmdCancel.OnClick = [this] {
    Happened("cancel");
    Hide();
  };
  tmrTick.OnTick = [this] { Happened("tick"); };
}

}  // namespace tolvane::libreoffice
