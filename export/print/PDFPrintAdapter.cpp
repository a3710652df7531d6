// SPDX-License-Identifier: GPL-3.0-only
#include "export/print/PDFPrintAdapter.h"

namespace ZEP::Overmarks
{

PDFPrintAdapter::~PDFPrintAdapter() = default;

juce::String PDFPrintAdapter::failure() const { return {}; }

bool PDFPrintAdapter::hasWaitedInVain() const { return false; }

void PDFPrintAdapter::expectLittle() {}

} // namespace ZEP::Overmarks
