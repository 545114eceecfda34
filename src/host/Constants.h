#pragma once

#include <cstdint>

namespace tolvane::host {

// The numbers are those of Excel's and Office's object models: they stand in settings and tables that users keep.

enum class CancelKey : int { Disabled = 0, Interrupt = 1, ErrorHandler = 2 };
enum class Calculation : int { Automatic = -4105, Manual = -4135 };
enum class ReferenceStyle : int { A1 = 1, R1C1 = -4150 };
enum class CutCopyMode : int { None = 0, Copy = 1, Cut = 2 };
enum class Cursor : int { Default = -4143, Wait = 2 };
enum class SheetVisibility : int { Hidden = 0, Visible = -1, VeryHidden = 2 };
enum class SelectionMode : int { NoRestrictions = 0, UnlockedCells = 1, NoSelection = -4142 };
enum class Direction : int { Left = -4159, Right = -4161, Up = -4162, Down = -4121 };
enum class Shift : int { Up = -4162, Left = -4159, Down = -4121, Right = -4161 };
enum class PasteType : int { All = -4104, Formulas = -4123, Values = -4163, Formats = -4122, Validation = 6 };
enum class Alignment : int { General = 1, Left = -4131, Center = -4108, Right = -4152 };
enum class BorderIndex : int {
  EdgeLeft = 7,
  EdgeTop = 8,
  EdgeBottom = 9,
  EdgeRight = 10,
  InsideVertical = 11,
  InsideHorizontal = 12,
};
enum class LineStyle : int { None = -4142, Continuous = 1 };
enum class SortOrder : int { Ascending = 1, Descending = 2 };
enum class FilterOperator : int { None = 0, And = 1, Or = 2, Values = 7 };
enum class AlertStyle : int { Stop = 1, Warning = 2, Information = 3 };

// An index into the default palette of 56 colours, from 1.
using ColorIndex = int;
inline constexpr ColorIndex kColorIndexNone = -4142;
inline constexpr ColorIndex kColorIndexAutomatic = -4105;

enum class BarPosition : int { Left = 0, Top = 1, Right = 2, Bottom = 3, Floating = 4, Popup = 5, MenuBar = 6 };
enum class ControlType : int { Button = 1, Edit = 2, Dropdown = 3, ComboBox = 4, Popup = 10 };
enum class ButtonStyle : int { Automatic = 0, Icon = 1, Caption = 2, IconAndCaption = 3 };
enum class ButtonState : int { Up = 0, Down = -1, Mixed = 2 };

// A message box: one of the button sets, one icon, the default button, added up as in the macro language's MsgBox.
namespace message {
inline constexpr int kOkOnly = 0, kOkCancel = 1, kYesNoCancel = 3, kYesNo = 4;
inline constexpr int kCritical = 16, kQuestion = 32, kExclamation = 48, kInformation = 64;
inline constexpr int kDefaultButton2 = 256;
}  // namespace message
enum class MessageResult : int { Ok = 1, Cancel = 2, Yes = 6, No = 7 };

}  // namespace tolvane::host
