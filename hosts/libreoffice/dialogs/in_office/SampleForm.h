#pragma once

#include <functional>
#include <string>
#include <vector>

#include "src/host/Form.h"

namespace tolvane::libreoffice {

// A form with every kind of control, each of which does something that can be seen.
class SampleForm final : public host::Form {
 public:
  SampleForm();

  std::vector<std::string> events;  // a line for each event that a control has raised
  std::function<void()> onAsk;      // what the button Ask does

  host::Label& lblName = Add<host::Label>("lblName", "&Name:");
  host::TextBox& txtName = Add<host::TextBox>("txtName");
  host::Label& lblCategory = Add<host::Label>("lblCategory", "&Category:");
  host::ComboBox& cboCategory = Add<host::ComboBox>("cboCategory");
  host::Label& lblPayee = Add<host::Label>("lblPayee", "&Payee:");
  host::ComboBox& cboPayee = Add<host::ComboBox>("cboPayee", host::ComboBox::Style::Editable);
  host::Label& lblCopies = Add<host::Label>("lblCopies", "C&opies:");
  host::TextBox& txtCopies = Add<host::TextBox>("txtCopies");
  host::Spin& spnCopies = Add<host::Spin>("spnCopies", 1, 3);
  host::CheckBox& chkNotes = Add<host::CheckBox>("chkNotes", "With no&tes:");
  host::TextBox& txtNotes = Add<host::TextBox>("txtNotes");
  host::OptionButton& optAll = Add<host::OptionButton>("optAll", "&All", "show");
  host::OptionButton& optOpen = Add<host::OptionButton>("optOpen", "Op&en only", "show");
  host::OptionButton& optByDate = Add<host::OptionButton>("optByDate", "By &date", "order");
  host::OptionButton& optByAmount = Add<host::OptionButton>("optByAmount", "By a&mount", "order");
  host::Label& lblBudget = Add<host::Label>("lblBudget", "Budget:");
  host::ColourBar& barBudget = Add<host::ColourBar>("barBudget");
  host::ListView& lvwItems = Add<host::ListView>("lvwItems");
  host::ReportBox& rptReport = Add<host::ReportBox>("rptReport");
  host::Label& lblStatus = Add<host::Label>("lblStatus", "Nothing has been done yet.");
  host::Label& lnkMore = Add<host::Label>("lnkMore", "What &is this?");
  host::Button& cmdAsk = Add<host::Button>("cmdAsk", "As&k...");
  host::Button& cmdOK = Add<host::Button>("cmdOK", "OK");
  host::Button& cmdCancel = Add<host::Button>("cmdCancel", "Cancel");
  host::Timer& tmrTick = Add<host::Timer>("tmrTick");

 private:
  void LayOut();
  void Fill();
  void Handle();
  void Happened(const std::string& what);
};

}  // namespace tolvane::libreoffice
