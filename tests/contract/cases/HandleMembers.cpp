#include "src/host/Form.h"
#include "tests/contract/Sheet.h"
#include "tests/contract/cases/Handles.h"

namespace tolvane::contract {
namespace {

using namespace host;  // this file is a table of the port

constexpr MemberCall<Range> kRange[] = {
    {"Range.Value", "get", [](const Range& r) { r.Value(); }},
    {"Range.Value", "set", [](const Range& r) { r.SetValue(CellValue(1)); }},
    {"Range.Formula", "get", [](const Range& r) { r.Formula(); }},
    {"Range.Formula", "set", [](const Range& r) { r.SetFormula(CellValue(1)); }},
    {"Range.FormulaR1C1", "get", [](const Range& r) { r.FormulaR1C1(); }},
    {"Range.FormulaR1C1", "set", [](const Range& r) { r.SetFormulaR1C1(CellValue(1)); }},
    {"Range.Text", "get", [](const Range& r) { r.Text(); }},
    {"Range.Row", "get", [](const Range& r) { r.Row(); }},
    {"Range.Column", "get", [](const Range& r) { r.Column(); }},
    {"Range.Rows.Count", "get", [](const Range& r) { r.Rows().Count(); }},
    {"Range.Rows.Item", "get", [](const Range& r) { r.Rows().Item(1); }},
    {"Range.Columns.Count", "get", [](const Range& r) { r.Columns().Count(); }},
    {"Range.Columns.Item", "get", [](const Range& r) { r.Columns().Item(1); }},
    {"Range.Count", "get", [](const Range& r) { r.Count(); }},
    {"Range.Address", "get", [](const Range& r) { r.Address(); }},
    {"Range.Parent", "get", [](const Range& r) { r.Parent(); }},
    {"Range.Areas", "get", [](const Range& r) { r.Areas(); }},
    {"Range.EntireRow", "get", [](const Range& r) { r.EntireRow(); }},
    {"Range.EntireColumn", "get", [](const Range& r) { r.EntireColumn(); }},
    {"Range.Offset", "get", [](const Range& r) { r.Offset(1, 1); }},
    {"Range.Resize", "get", [](const Range& r) { r.Resize(1, 1); }},
    {"Range.Cells", "get", [](const Range& r) { r.Cells(1, 1); }},
    {"Range.End", "get", [](const Range& r) { r.End(Direction::Down); }},
    {"Range.Select", "call", [](const Range& r) { r.Select(); }},
    {"Range.Activate", "call", [](const Range& r) { r.Activate(); }},
    {"Range.ClearContents", "call", [](const Range& r) { r.ClearContents(); }},
    {"Range.Clear", "call", [](const Range& r) { r.Clear(); }},
    {"Range.Delete", "call", [](const Range& r) { r.Delete(); }},
    {"Range.Insert", "call", [](const Range& r) { r.Insert(); }},
    {"Range.Copy", "call", [](const Range& r) { r.Copy(); }},
    {"Range.Cut", "call", [](const Range& r) { r.Cut(); }},
    {"Range.PasteSpecial", "call", [](const Range& r) { r.PasteSpecial(PasteType::All); }},
    {"Range.Merge", "call", [](const Range& r) { r.Merge(); }},
    {"Range.UnMerge", "call", [](const Range& r) { r.UnMerge(); }},
    {"Range.MergeCells", "get", [](const Range& r) { r.MergeCells(); }},
    {"Range.Sort", "call", [](const Range& r) { r.Sort({}); }},
    {"Range.Locked", "get", [](const Range& r) { r.Locked(); }},
    {"Range.Locked", "set", [](const Range& r) { r.SetLocked(true); }},
    {"Range.FormulaHidden", "get", [](const Range& r) { r.FormulaHidden(); }},
    {"Range.FormulaHidden", "set", [](const Range& r) { r.SetFormulaHidden(true); }},
    {"Range.Hidden", "get", [](const Range& r) { r.Hidden(); }},
    {"Range.Hidden", "set", [](const Range& r) { r.SetHidden(true); }},
    {"Range.Style", "get", [](const Range& r) { r.Style(); }},
    {"Range.Style", "set", [](const Range& r) { r.SetStyle("Normal"); }},
    {"Range.NumberFormat", "get", [](const Range& r) { r.NumberFormat(); }},
    {"Range.NumberFormat", "set", [](const Range& r) { r.SetNumberFormat("0"); }},
    {"Range.HorizontalAlignment", "get", [](const Range& r) { r.HorizontalAlignment(); }},
    {"Range.HorizontalAlignment", "set", [](const Range& r) { r.SetHorizontalAlignment(Alignment::Left); }},
    {"Range.WrapText", "get", [](const Range& r) { r.WrapText(); }},
    {"Range.WrapText", "set", [](const Range& r) { r.SetWrapText(true); }},
    {"Range.ColumnWidth", "get", [](const Range& r) { r.ColumnWidth(); }},
    {"Range.ColumnWidth", "set", [](const Range& r) { r.SetColumnWidth(9); }},
    {"Range.RowHeight", "get", [](const Range& r) { r.RowHeight(); }},
    {"Range.RowHeight", "set", [](const Range& r) { r.SetRowHeight(9); }},
    {"Font.Bold", "get", [](const Range& r) { r.Font().Bold(); }},
    {"Font.Bold", "set", [](const Range& r) { r.Font().SetBold(true); }},
    {"Font.Italic", "get", [](const Range& r) { r.Font().Italic(); }},
    {"Font.Italic", "set", [](const Range& r) { r.Font().SetItalic(true); }},
    {"Interior.ColorIndex", "get", [](const Range& r) { r.Interior().ColorIndex(); }},
    {"Interior.ColorIndex", "set", [](const Range& r) { r.Interior().SetColorIndex(3); }},
    {"Borders.LineStyle", "get", [](const Range& r) { r.Borders(BorderIndex::EdgeTop).LineStyle(); }},
    {"Borders.LineStyle", "set",
     [](const Range& r) { r.Borders(BorderIndex::EdgeTop).SetLineStyle(LineStyle::Continuous); }},
    {"Borders.ColorIndex", "get", [](const Range& r) { r.Borders(BorderIndex::EdgeTop).ColorIndex(); }},
    {"Borders.ColorIndex", "set", [](const Range& r) { r.Borders(BorderIndex::EdgeTop).SetColorIndex(3); }},
    {"Validation.Delete", "call", [](const Range& r) { r.Validation().Delete(); }},
    {"Validation.Add", "call", [](const Range& r) { r.Validation().Add(ListRule("=$A$1")); }},
    {"Validation.Rule", "get", [](const Range& r) { r.Validation().Rule(); }},
    {"Hyperlinks.Add", "call", [](const Range& r) { r.Hyperlinks().Add(LinkTo("A1")); }},
    {"Hyperlinks.Delete", "call", [](const Range& r) { r.Hyperlinks().Delete(); }},
    {"Hyperlinks.Items", "get", [](const Range& r) { r.Hyperlinks().Items(); }},
    {"Range.AutoFilter", "call", [](const Range& r) { r.AutoFilter(); }},
    {"Range.AutoFilter", "call", [](const Range& r) { r.AutoFilter(FilterCriterion{}); }},
};

constexpr MemberCall<Worksheet> kWorksheet[] = {
    {"Worksheet.Name", "get", [](const Worksheet& s) { s.Name(); }},
    {"Worksheet.Name", "set", [](const Worksheet& s) { s.SetName("X"); }},
    {"Worksheet.CodeName", "get", [](const Worksheet& s) { s.CodeName(); }},
    {"Worksheet.CodeName", "set", [](const Worksheet& s) { s.SetCodeName("X"); }},
    {"Worksheet.Index", "get", [](const Worksheet& s) { s.Index(); }},
    {"Worksheet.Parent", "get", [](const Worksheet& s) { s.Parent(); }},
    {"Worksheet.Visible", "get", [](const Worksheet& s) { s.Visible(); }},
    {"Worksheet.Visible", "set", [](const Worksheet& s) { s.SetVisible(SheetVisibility::Visible); }},
    {"Worksheet.PageSetup", "get", [](const Worksheet& s) { s.PageSetup(); }},
    {"Worksheet.PageSetup", "set", [](const Worksheet& s) { s.SetPageSetup({.landscape = true}); }},
    {"Tab.ColorIndex", "get", [](const Worksheet& s) { s.Tab().ColorIndex(); }},
    {"Tab.ColorIndex", "set", [](const Worksheet& s) { s.Tab().SetColorIndex(3); }},
    {"Worksheet.Activate", "call", [](const Worksheet& s) { s.Activate(); }},
    {"Worksheet.Copy", "call", [](const Worksheet& s) { s.CopyBefore(s); }},
    {"Worksheet.Copy", "call", [](const Worksheet& s) { s.CopyAfter(s); }},
    {"Worksheet.Move", "call", [](const Worksheet& s) { s.MoveBefore(s); }},
    {"Worksheet.Move", "call", [](const Worksheet& s) { s.MoveAfter(s); }},
    {"Worksheet.Delete", "call", [](const Worksheet& s) { s.Delete(); }},
    {"Worksheet.Calculate", "call", [](const Worksheet& s) { s.Calculate(); }},
    {"Worksheet.Range", "get", [](const Worksheet& s) { s.Range("A1"); }},
    {"Worksheet.Cells", "get", [](const Worksheet& s) { s.Cells(1, 1); }},
    {"Worksheet.Cells", "get", [](const Worksheet& s) { s.Cells(); }},
    {"Worksheet.Rows.Count", "get", [](const Worksheet& s) { s.Rows().Count(); }},
    {"Worksheet.Rows.Item", "get", [](const Worksheet& s) { s.Rows().Item(1); }},
    {"Worksheet.Columns.Count", "get", [](const Worksheet& s) { s.Columns().Count(); }},
    {"Worksheet.Columns.Item", "get", [](const Worksheet& s) { s.Columns().Item(1); }},
    {"Worksheet.Names", "get", [](const Worksheet& s) { s.Names(); }},
    {"Worksheet.ProtectContents", "get", [](const Worksheet& s) { s.ProtectContents(); }},
    {"Worksheet.Protection", "get", [](const Worksheet& s) { s.Protection(); }},
    {"Worksheet.Protect", "call", [](const Worksheet& s) { s.Protect({}); }},
    {"Worksheet.Unprotect", "call", [](const Worksheet& s) { s.Unprotect(); }},
    {"Worksheet.AutoFilterMode", "get", [](const Worksheet& s) { s.AutoFilterMode(); }},
    {"Worksheet.AutoFilterMode", "set", [](const Worksheet& s) { s.SetAutoFilterModeOff(); }},
    {"AutoFilter.Range", "get", [](const Worksheet& s) { s.AutoFilter().Range(); }},
    {"AutoFilter.Filters", "get", [](const Worksheet& s) { s.AutoFilter().Filters(); }},
    {"Worksheet.EnableSelection", "get", [](const Worksheet& s) { s.EnableSelection(); }},
    {"Worksheet.EnableSelection", "set",
     [](const Worksheet& s) { s.SetEnableSelection(SelectionMode::NoRestrictions); }},
    {"Worksheet.PasteSpecial", "call", [](const Worksheet& s) { s.PasteSpecialText(); }},
    {"Worksheet.DeleteRows", "call", [](const Worksheet& s) { s.DeleteRows({}); }},
    {"Worksheet.InsertRows", "call", [](const Worksheet& s) { s.InsertRows({}); }},
};

constexpr MemberCall<Workbook> kWorkbook[] = {
    {"Workbook.Name", "get", [](const Workbook& b) { b.Name(); }},
    {"Workbook.Path", "get", [](const Workbook& b) { b.Path(); }},
    {"Workbook.FullName", "get", [](const Workbook& b) { b.FullName(); }},
    {"Workbook.Saved", "get", [](const Workbook& b) { b.Saved(); }},
    {"Workbook.Saved", "set", [](const Workbook& b) { b.SetSaved(true); }},
    {"Workbook.IsAddin", "get", [](const Workbook& b) { b.IsAddin(); }},
    {"Workbook.IsAddin", "set", [](const Workbook& b) { b.SetIsAddin(false); }},
    {"Workbook.ProtectStructure", "get", [](const Workbook& b) { b.ProtectStructure(); }},
    {"Workbook.ProtectStructure", "set", [](const Workbook& b) { b.SetProtectStructure(true); }},
    {"Workbook.Names", "get", [](const Workbook& b) { b.Names(); }},
    {"Worksheets.Count", "get", [](const Workbook& b) { b.Worksheets().Count(); }},
    {"Worksheets.Item", "get", [](const Workbook& b) { b.Worksheets().Item(1); }},
    {"Worksheets.Item", "get", [](const Workbook& b) { b.Worksheets().Item("X"); }},
    {"Worksheets.All", "get", [](const Workbook& b) { b.Worksheets().All(); }},
    {"Worksheets.Add", "call", [](const Workbook& b) { b.Worksheets().Add(); }},
    {"Workbook.ActiveSheet", "get", [](const Workbook& b) { b.ActiveSheet(); }},
    {"Workbook.Windows", "get", [](const Workbook& b) { b.Windows(); }},
    {"Workbook.Activate", "call", [](const Workbook& b) { b.Activate(); }},
    {"Workbook.DefineStyle", "call", [](const Workbook& b) { b.DefineStyle({}); }},
    {"Workbook.StyleNames", "get", [](const Workbook& b) { b.StyleNames(); }},
    {"Workbook.Save", "call", [](const Workbook& b) { b.Save(); }},
    {"Workbook.SaveAs", "call", [](const Workbook& b) { b.SaveAs("x.xlsx"); }},
    {"Workbook.Close", "call", [](const Workbook& b) { b.Close(false); }},
};

constexpr MemberCall<Name> kName[] = {
    {"Name.Name", "get", [](const Name& n) { n.NameText(); }},
    {"Name.RefersTo", "get", [](const Name& n) { n.RefersTo(); }},
    {"Name.RefersTo", "set", [](const Name& n) { n.SetRefersTo("=1"); }},
    {"Name.RefersToR1C1", "get", [](const Name& n) { n.RefersToR1C1(); }},
    {"Name.RefersToR1C1", "set", [](const Name& n) { n.SetRefersToR1C1("=1"); }},
    {"Name.RefersToRange", "get", [](const Name& n) { n.RefersToRange(); }},
    {"Name.Visible", "get", [](const Name& n) { n.Visible(); }},
    {"Name.Visible", "set", [](const Name& n) { n.SetVisible(true); }},
    {"Name.Delete", "call", [](const Name& n) { n.Delete(); }},
};

constexpr MemberCall<Names> kNames[] = {
    {"Names.Item", "get", [](const Names& n) { n.Item("x"); }},
    {"Names.All", "get", [](const Names& n) { n.All(); }},
    {"Names.Add", "call", [](const Names& n) { n.Add("x", "=1"); }},
    {"Names.Add", "call", [](const Names& n) { n.AddR1C1("x", "=1"); }},
};

constexpr MemberCall<Window> kWindow[] = {
    {"Window.ActiveCell", "get", [](const Window& w) { w.ActiveCell(); }},
    {"Window.VisibleRange", "get", [](const Window& w) { w.VisibleRange(); }},
    {"Window.ScrollRow", "get", [](const Window& w) { w.ScrollRow(); }},
    {"Window.ScrollRow", "set", [](const Window& w) { w.SetScrollRow(1); }},
    {"Window.ScrollColumn", "get", [](const Window& w) { w.ScrollColumn(); }},
    {"Window.ScrollColumn", "set", [](const Window& w) { w.SetScrollColumn(1); }},
    {"Window.Zoom", "get", [](const Window& w) { w.Zoom(); }},
    {"Window.Zoom", "set", [](const Window& w) { w.SetZoom(100); }},
    {"Window.SplitRow", "get", [](const Window& w) { w.SplitRow(); }},
    {"Window.SplitRow", "set", [](const Window& w) { w.SetSplitRow(1); }},
    {"Window.SplitColumn", "get", [](const Window& w) { w.SplitColumn(); }},
    {"Window.SplitColumn", "set", [](const Window& w) { w.SetSplitColumn(1); }},
    {"Window.FreezePanes", "get", [](const Window& w) { w.FreezePanes(); }},
    {"Window.FreezePanes", "set", [](const Window& w) { w.SetFreezePanes(true); }},
    {"Window.DisplayGridlines", "get", [](const Window& w) { w.DisplayGridlines(); }},
    {"Window.DisplayGridlines", "set", [](const Window& w) { w.SetDisplayGridlines(true); }},
};

constexpr MemberCall<CommandBar> kCommandBar[] = {
    {"CommandBar.Name", "get", [](const CommandBar& b) { b.Name(); }},
    {"CommandBar.BuiltIn", "get", [](const CommandBar& b) { b.BuiltIn(); }},
    {"CommandBar.Visible", "get", [](const CommandBar& b) { b.Visible(); }},
    {"CommandBar.Visible", "set", [](const CommandBar& b) { b.SetVisible(true); }},
    {"CommandBar.Enabled", "get", [](const CommandBar& b) { b.Enabled(); }},
    {"CommandBar.Enabled", "set", [](const CommandBar& b) { b.SetEnabled(true); }},
    {"CommandBar.Position", "get", [](const CommandBar& b) { b.Position(); }},
    {"CommandBar.Position", "set", [](const CommandBar& b) { b.SetPosition(BarPosition::Left); }},
    {"CommandBar.Protection", "get", [](const CommandBar& b) { b.Protection(); }},
    {"CommandBar.Protection", "set", [](const CommandBar& b) { b.SetProtection(0); }},
    {"CommandBar.RowIndex", "get", [](const CommandBar& b) { b.RowIndex(); }},
    {"CommandBar.RowIndex", "set", [](const CommandBar& b) { b.SetRowIndex(1); }},
    {"CommandBar.Left", "get", [](const CommandBar& b) { b.Left(); }},
    {"CommandBar.Left", "set", [](const CommandBar& b) { b.SetLeft(1); }},
    {"CommandBar.Top", "get", [](const CommandBar& b) { b.Top(); }},
    {"CommandBar.Top", "set", [](const CommandBar& b) { b.SetTop(1); }},
    {"CommandBar.Width", "get", [](const CommandBar& b) { b.Width(); }},
    {"CommandBar.Width", "set", [](const CommandBar& b) { b.SetWidth(1); }},
    {"CommandBar.Height", "get", [](const CommandBar& b) { b.Height(); }},
    {"CommandBar.Height", "set", [](const CommandBar& b) { b.SetHeight(1); }},
    {"CommandBar.Delete", "call", [](const CommandBar& b) { b.Delete(); }},
    {"CommandBar.ShowPopup", "call", [](const CommandBar& b) { b.ShowPopup(); }},
    {"CommandBarControls.Count", "get", [](const CommandBar& b) { b.Controls().Count(); }},
    {"CommandBarControls.Item", "get", [](const CommandBar& b) { b.Controls().Item(1); }},
    {"CommandBarControls.Item", "get", [](const CommandBar& b) { b.Controls().Item("x"); }},
    {"CommandBarControls.All", "get", [](const CommandBar& b) { b.Controls().All(); }},
    {"CommandBarControls.Add", "call", [](const CommandBar& b) { b.Controls().Add({}); }},
};

constexpr MemberCall<CommandBarControl> kControl[] = {
    {"CommandBarControl.Caption", "get", [](const CommandBarControl& c) { c.Caption(); }},
    {"CommandBarControl.Caption", "set", [](const CommandBarControl& c) { c.SetCaption("x"); }},
    {"CommandBarControl.Id", "get", [](const CommandBarControl& c) { c.Id(); }},
    {"CommandBarControl.Type", "get", [](const CommandBarControl& c) { c.Type(); }},
    {"CommandBarControl.BuiltIn", "get", [](const CommandBarControl& c) { c.BuiltIn(); }},
    {"CommandBarControl.Enabled", "get", [](const CommandBarControl& c) { c.Enabled(); }},
    {"CommandBarControl.Enabled", "set", [](const CommandBarControl& c) { c.SetEnabled(true); }},
    {"CommandBarControl.Visible", "get", [](const CommandBarControl& c) { c.Visible(); }},
    {"CommandBarControl.Visible", "set", [](const CommandBarControl& c) { c.SetVisible(true); }},
    {"CommandBarControl.Tag", "get", [](const CommandBarControl& c) { c.Tag(); }},
    {"CommandBarControl.Tag", "set", [](const CommandBarControl& c) { c.SetTag("x"); }},
    {"CommandBarControl.Parameter", "get", [](const CommandBarControl& c) { c.Parameter(); }},
    {"CommandBarControl.Parameter", "set", [](const CommandBarControl& c) { c.SetParameter("x"); }},
    {"CommandBarControl.OnAction", "get", [](const CommandBarControl& c) { c.OnAction(); }},
    {"CommandBarControl.OnAction", "set", [](const CommandBarControl& c) { c.SetOnAction("x"); }},
    {"CommandBarControl.Style", "get", [](const CommandBarControl& c) { c.Style(); }},
    {"CommandBarControl.Style", "set", [](const CommandBarControl& c) { c.SetStyle(ButtonStyle::Icon); }},
    {"CommandBarControl.State", "get", [](const CommandBarControl& c) { c.State(); }},
    {"CommandBarControl.State", "set", [](const CommandBarControl& c) { c.SetState(ButtonState::Up); }},
    {"CommandBarControl.Width", "get", [](const CommandBarControl& c) { c.Width(); }},
    {"CommandBarControl.Width", "set", [](const CommandBarControl& c) { c.SetWidth(1); }},
    {"CommandBarControl.BeginGroup", "get", [](const CommandBarControl& c) { c.BeginGroup(); }},
    {"CommandBarControl.BeginGroup", "set", [](const CommandBarControl& c) { c.SetBeginGroup(true); }},
    {"CommandBarControl.ShortcutText", "get", [](const CommandBarControl& c) { c.ShortcutText(); }},
    {"CommandBarControl.ShortcutText", "set", [](const CommandBarControl& c) { c.SetShortcutText("x"); }},
    {"CommandBarControl.TooltipText", "get", [](const CommandBarControl& c) { c.TooltipText(); }},
    {"CommandBarControl.TooltipText", "set", [](const CommandBarControl& c) { c.SetTooltipText("x"); }},
    {"CommandBarControl.FaceId", "get", [](const CommandBarControl& c) { c.FaceId(); }},
    {"CommandBarControl.FaceId", "set", [](const CommandBarControl& c) { c.SetFaceId(1); }},
    {"CommandBarControl.Picture", "get", [](const CommandBarControl& c) { c.Face(); }},
    {"CommandBarControl.Picture", "set", [](const CommandBarControl& c) { c.SetFace({}, {}); }},
    {"CommandBarControl.List", "get", [](const CommandBarControl& c) { c.Items(); }},
    {"CommandBarControl.AddItem", "call", [](const CommandBarControl& c) { c.AddItem("x"); }},
    {"CommandBarControl.Delete", "call", [](const CommandBarControl& c) { c.Delete(); }},
    {"CommandBarControl.Click", "call",
     [](const CommandBarControl& c) { c.AdviseClick([](const CommandBarControl&, bool&) {}); }},
    {"CommandBarControls.Count", "get", [](const CommandBarControl& c) { c.Controls().Count(); }},
    {"CommandBarControls.Add", "call", [](const CommandBarControl& c) { c.Controls().Add({}); }},
};

constexpr MemberCall<CommandBars> kCommandBars[] = {
    {"CommandBars.All", "get", [](const CommandBars& b) { b.All(); }},
    {"CommandBars.Item", "get", [](const CommandBars& b) { b.Item("x"); }},
    {"CommandBars.Item", "get", [](const CommandBars& b) { b.Item(1); }},
    {"CommandBars.Add", "call", [](const CommandBars& b) { b.Add({}); }},
    {"CommandBars.FindControl", "call", [](const CommandBars& b) { b.FindControl(1); }},
    {"CommandBars.DisplayTooltips", "get", [](const CommandBars& b) { b.DisplayTooltips(); }},
    {"CommandBars.DisplayTooltips", "set", [](const CommandBars& b) { b.SetDisplayTooltips(true); }},
    {"CommandBars.DisplayKeysInTooltips", "get", [](const CommandBars& b) { b.DisplayKeysInTooltips(); }},
    {"CommandBars.DisplayKeysInTooltips", "set", [](const CommandBars& b) { b.SetDisplayKeysInTooltips(true); }},
};

constexpr MemberCall<RibbonUI> kRibbon[] = {
    {"RibbonUI.Invalidate", "call", [](const RibbonUI& r) { r.Invalidate(); }},
    {"RibbonUI.InvalidateControl", "call", [](const RibbonUI& r) { r.InvalidateControl("x"); }},
};

constexpr MemberCall<Application> kApplication[] = {
    {"Application.Version", "get", [](const Application& a) { a.Version(); }},
    {"Application.Caption", "get", [](const Application& a) { a.Caption(); }},
    {"Application.StatusBar", "get", [](const Application& a) { a.StatusBar(); }},
    {"Application.StatusBar", "set", [](const Application& a) { a.SetStatusBar("x"); }},
    {"Application.ScreenUpdating", "get", [](const Application& a) { a.ScreenUpdating(); }},
    {"Application.ScreenUpdating", "set", [](const Application& a) { a.SetScreenUpdating(true); }},
    {"Application.EnableEvents", "get", [](const Application& a) { a.EnableEvents(); }},
    {"Application.EnableEvents", "set", [](const Application& a) { a.SetEnableEvents(true); }},
    {"Application.DisplayAlerts", "get", [](const Application& a) { a.DisplayAlerts(); }},
    {"Application.DisplayAlerts", "set", [](const Application& a) { a.SetDisplayAlerts(true); }},
    {"Application.Cursor", "get", [](const Application& a) { a.Cursor(); }},
    {"Application.Cursor", "set", [](const Application& a) { a.SetCursor(Cursor::Default); }},
    {"Application.EnableCancelKey", "get", [](const Application& a) { a.EnableCancelKey(); }},
    {"Application.EnableCancelKey", "set", [](const Application& a) { a.SetEnableCancelKey(CancelKey::Interrupt); }},
    {"Application.Calculation", "get", [](const Application& a) { a.Calculation(); }},
    {"Application.Calculation", "set", [](const Application& a) { a.SetCalculation(Calculation::Automatic); }},
    {"Application.ReferenceStyle", "get", [](const Application& a) { a.ReferenceStyle(); }},
    {"Application.ReferenceStyle", "set", [](const Application& a) { a.SetReferenceStyle(ReferenceStyle::A1); }},
    {"Application.CutCopyMode", "get", [](const Application& a) { a.CutCopyMode(); }},
    {"Application.CutCopyMode", "set", [](const Application& a) { a.EndCutCopyMode(); }},
    {"Workbooks.Count", "get", [](const Application& a) { a.Workbooks().Count(); }},
    {"Workbooks.Item", "get", [](const Application& a) { a.Workbooks().Item(1); }},
    {"Workbooks.Item", "get", [](const Application& a) { a.Workbooks().Item("x"); }},
    {"Workbooks.All", "get", [](const Application& a) { a.Workbooks().All(); }},
    {"Workbooks.Open", "call", [](const Application& a) { a.Workbooks().Open("x"); }},
    {"Workbooks.Add", "call", [](const Application& a) { a.Workbooks().Add(); }},
    {"Application.ActiveWorkbook", "get", [](const Application& a) { a.ActiveWorkbook(); }},
    {"Application.ActiveSheet", "get", [](const Application& a) { a.ActiveSheet(); }},
    {"Application.ActiveCell", "get", [](const Application& a) { a.ActiveCell(); }},
    {"Application.ActiveWindow", "get", [](const Application& a) { a.ActiveWindow(); }},
    {"Application.ThisWorkbook", "get", [](const Application& a) { a.ThisWorkbook(); }},
    {"Selection.IsRange", "get", [](const Application& a) { a.Selection().IsRange(); }},
    {"Selection.Range", "get", [](const Application& a) { a.Selection().Range(); }},
    {"Selection.Copy", "call", [](const Application& a) { a.Selection().Copy(); }},
    {"Selection.Cut", "call", [](const Application& a) { a.Selection().Cut(); }},
    {"Application.Intersect", "call", [](const Application& a) { a.Intersect(Range(), Range()); }},
    {"Application.Union", "call", [](const Application& a) { a.Union(Range(), Range()); }},
    {"Application.Union", "call", [](const Application& a) { a.Union({}); }},
    {"Application.CommandBars", "get", [](const Application& a) { a.CommandBars(); }},
    {"Application.OnKey", "call", [](const Application& a) { a.OnKey("^c"); }},
    {"Application.SendKeys", "call", [](const Application& a) { a.SendKeys("^c"); }},
    {"Application.Run", "call", [](const Application& a) { a.Run("x"); }},
    {"Application.OnUndo", "call", [](const Application& a) { a.OnUndo("x", "y"); }},
    {"Application.OnRepeat", "call", [](const Application& a) { a.OnRepeat("", ""); }},
    {"Application.Advise", "call",
     [](const Application& a) {
       ApplicationEvents deaf;
       a.Advise(deaf);
     }},
    {"Application.User", "get", [](const Application& a) { a.User(); }},
};

constexpr MemberCall<User> kUser[] = {
    {"User.MsgBox", "call", [](const User& u) { u.MsgBox("x", 0, "x"); }},
    {"User.ShowForm", "call",
     [](const User& u) {
       Form form("F", "x");
       u.ShowForm(form);
     }},
    {"User.GetOpenFilename", "call", [](const User& u) { u.GetOpenFilename({}); }},
    {"User.GetSaveAsFilename", "call", [](const User& u) { u.GetSaveAsFilename({}); }},
    {"User.PeekKey", "call", [](const User& u) { u.PeekKey(); }},
    {"User.EscPressed", "call", [](const User& u) { u.EscPressed(); }},
    {"User.ClipboardHasText", "get", [](const User& u) { u.ClipboardHasText(); }},
    {"User.ClipboardText", "get", [](const User& u) { u.ClipboardText(); }},
    {"User.Now", "get", [](const User& u) { u.Now(); }},
    {"User.Setting", "get", [](const User& u) { u.Setting("x", "x", "x"); }},
    {"User.SaveSetting", "call", [](const User& u) { u.SaveSetting("x", "x", "x", "x"); }},
    {"User.OpenBrowser", "call", [](const User& u) { u.OpenBrowser("x"); }},
    {"User.ShowHelp", "call", [](const User& u) { u.ShowHelp("x", 0); }},
    {"User.HttpGet", "call", [](const User& u) { u.HttpGet("x"); }},
    {"User.LoadPicture", "call", [](const User& u) { u.LoadPicture("x"); }},
    {"User.FileExists", "call", [](const User& u) { u.FileExists("x"); }},
    {"User.ReadFile", "call", [](const User& u) { u.ReadFile("x"); }},
    {"User.AppendLine", "call", [](const User& u) { u.AppendLine("x", "x"); }},
};

}  // namespace

std::span<const MemberCall<Range>> RangeMembers() {
  return kRange;
}
std::span<const MemberCall<Worksheet>> WorksheetMembers() {
  return kWorksheet;
}
std::span<const MemberCall<Workbook>> WorkbookMembers() {
  return kWorkbook;
}
std::span<const MemberCall<Name>> NameMembers() {
  return kName;
}
std::span<const MemberCall<Names>> NamesMembers() {
  return kNames;
}
std::span<const MemberCall<Window>> WindowMembers() {
  return kWindow;
}
std::span<const MemberCall<CommandBar>> CommandBarMembers() {
  return kCommandBar;
}
std::span<const MemberCall<CommandBarControl>> ControlMembers() {
  return kControl;
}
std::span<const MemberCall<CommandBars>> CommandBarsMembers() {
  return kCommandBars;
}
std::span<const MemberCall<RibbonUI>> RibbonMembers() {
  return kRibbon;
}
std::span<const MemberCall<Application>> ApplicationMembers() {
  return kApplication;
}
std::span<const MemberCall<User>> UserMembers() {
  return kUser;
}

}  // namespace tolvane::contract
