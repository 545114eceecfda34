#include "hosts/shell/BuiltInControls.h"

#include <algorithm>
#include <iterator>

namespace tolvane::shell {
namespace {

using host::BarPosition;
using Item = BuiltInItem;

constexpr Item kFileMenu[] = {Item{18},        Item{23},  Item{106}, Item{3, true},  Item{748},
                              Item{247, true}, Item{109}, Item{4},   Item{752, true}};
constexpr Item kEditMenu[] = {Item{128},
                              Item{builtin::kCut, true},
                              Item{builtin::kCopy},
                              Item{builtin::kPaste},
                              Item{builtin::kPasteSpecial},
                              Item{478, true},
                              Item{1849, true},
                              Item{313},
                              Item{757}};
constexpr Item kViewMenu[] = {Item{925}};
constexpr Item kInsertMenu[] = {Item{295}, Item{296}, Item{297}};
constexpr Item kFormatMenu[] = {Item{855}};
constexpr Item kProtectionMenu[] = {Item{builtin::kProtectSheet}};
constexpr Item kToolsMenu[] = {Item{2}, Item{30029, true}, Item{522, true}};
constexpr Item kDataMenu[] = {Item{builtin::kSort}};
constexpr Item kWindowMenu[] = {Item{303}, Item{443, true}};
constexpr Item kHelpMenu[] = {Item{984}, Item{927, true}};
constexpr Item kPasteMenu[] = {Item{builtin::kPasteValues}, Item{builtin::kPasteFormatting},
                               Item{builtin::kPasteSpecial, true}};

// Sorted by id.
constexpr BuiltInControl kControls[] = {
    BuiltInControl{2, "&Spelling...", "F7"},
    BuiltInControl{3, "&Save", "Ctrl+S"},
    BuiltInControl{4, "&Print...", "Ctrl+P"},
    BuiltInControl{18, "&New...", "Ctrl+N"},
    BuiltInControl{builtin::kCopy, "&Copy", "Ctrl+C"},
    BuiltInControl{builtin::kCut, "Cu&t", "Ctrl+X"},
    BuiltInControl{builtin::kPaste, "&Paste", "Ctrl+V"},
    BuiltInControl{23, "&Open...", "Ctrl+O"},
    BuiltInControl{106, "&Close"},
    BuiltInControl{109, "Print Pre&view"},
    BuiltInControl{113, "&Bold", "Ctrl+B"},
    BuiltInControl{114, "&Italic", "Ctrl+I"},
    BuiltInControl{115, "&Underline", "Ctrl+U"},
    BuiltInControl{120, "Align &Left"},
    BuiltInControl{121, "Align &Right"},
    BuiltInControl{122, "&Center"},
    BuiltInControl{128, "&Undo", "Ctrl+Z"},
    BuiltInControl{builtin::kSortAscending, "Sort &Ascending"},
    BuiltInControl{builtin::kSortDescending, "Sort Des&cending"},
    BuiltInControl{247, "Page Set&up..."},
    BuiltInControl{295, "C&ells..."},
    BuiltInControl{296, "&Rows"},
    BuiltInControl{297, "&Columns"},
    BuiltInControl{303, "&New Window"},
    BuiltInControl{313, "R&eplace...", "Ctrl+H"},
    BuiltInControl{builtin::kPasteFormatting, "Paste Fo&rmatting"},
    BuiltInControl{builtin::kPasteValues, "Paste &Values"},
    BuiltInControl{395, "&Currency Style"},
    BuiltInControl{396, "&Percent Style"},
    BuiltInControl{443, "&Freeze Panes"},
    BuiltInControl{478, "&Delete..."},
    BuiltInControl{522, "&Options..."},
    BuiltInControl{748, "Save &As..."},
    BuiltInControl{752, "E&xit"},
    BuiltInControl{builtin::kPasteSpecial, "Paste &Special..."},
    BuiltInControl{757, "&Go To...", "Ctrl+G"},
    BuiltInControl{855, "C&ells...", "Ctrl+1"},
    BuiltInControl{builtin::kProtectSheet, "&Protect Sheet..."},
    BuiltInControl{925, "&Zoom..."},
    BuiltInControl{927, "&About"},
    BuiltInControl{builtin::kSort, "&Sort..."},
    BuiltInControl{984, "&Help", "F1"},
    BuiltInControl{1849, "&Find...", "Ctrl+F"},
    BuiltInControl{builtin::kPasteButton, "&Paste", "Ctrl+V", kPasteMenu},
    BuiltInControl{30002, "&File", {}, kFileMenu},
    BuiltInControl{30003, "&Edit", {}, kEditMenu},
    BuiltInControl{30004, "&View", {}, kViewMenu},
    BuiltInControl{30005, "&Insert", {}, kInsertMenu},
    BuiltInControl{30006, "F&ormat", {}, kFormatMenu},
    BuiltInControl{30007, "&Tools", {}, kToolsMenu},
    BuiltInControl{30009, "&Window", {}, kWindowMenu},
    BuiltInControl{30010, "&Help", {}, kHelpMenu},
    BuiltInControl{30011, "&Data", {}, kDataMenu},
    BuiltInControl{30029, "&Protection", {}, kProtectionMenu},
};

constexpr bool ById(const BuiltInControl& a, const BuiltInControl& b) {
  return a.id < b.id;
}
static_assert(std::is_sorted(std::begin(kControls), std::end(kControls), ById));

constexpr Item kMenuBar[] = {Item{30002}, Item{30003}, Item{30004}, Item{30005}, Item{30006},
                             Item{30007}, Item{30011}, Item{30009}, Item{30010}};
constexpr Item kStandardBar[] = {Item{18},
                                 Item{23},
                                 Item{3},
                                 Item{4, true},
                                 Item{109},
                                 Item{builtin::kCut, true},
                                 Item{builtin::kCopy},
                                 Item{builtin::kPasteButton},
                                 Item{128, true},
                                 Item{builtin::kSortAscending, true},
                                 Item{builtin::kSortDescending},
                                 Item{984, true}};
constexpr Item kFormattingBar[] = {Item{113}, Item{114}, Item{115},       Item{120, true},
                                   Item{122}, Item{121}, Item{395, true}, Item{396}};
constexpr Item kCellMenu[] = {
    Item{builtin::kCut}, Item{builtin::kCopy}, Item{builtin::kPaste}, Item{builtin::kPasteSpecial}, Item{295, true},
    Item{478},           Item{855, true}};

constexpr BuiltInBar kBars[] = {
    BuiltInBar{"Worksheet Menu Bar", BarPosition::Top, kMenuBar},
    BuiltInBar{"Standard", BarPosition::Top, kStandardBar},
    BuiltInBar{"Formatting", BarPosition::Top, kFormattingBar},
    BuiltInBar{"Cell", BarPosition::Popup, kCellMenu},
};

}  // namespace

const BuiltInControl* FindBuiltInControl(int id) {
  const auto found =
      std::lower_bound(std::begin(kControls), std::end(kControls), BuiltInControl{.id = id, .caption = {}}, ById);
  return found != std::end(kControls) && found->id == id ? &*found : nullptr;
}

std::span<const BuiltInBar> BuiltInBars() {
  return kBars;
}

}  // namespace tolvane::shell
