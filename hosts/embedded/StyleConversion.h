#pragma once

#include "engine/model/Format.h"
#include "src/host/Constants.h"
#include "src/host/Workbook.h"

namespace tolvane::embedded {

engine::NamedStyle ToEngine(const host::StyleDefinition& style);

// The numbers are those of Excel's object model, those that the port does not name too.
host::Alignment ToHost(engine::HorizontalAlignment alignment);
engine::HorizontalAlignment ToEngine(host::Alignment alignment);  // an unknown one is ApplicationDefined
host::LineStyle ToHost(engine::LineStyle style);

}  // namespace tolvane::embedded
