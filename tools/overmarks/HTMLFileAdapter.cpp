// SPDX-License-Identifier: GPL-3.0-only
#include "HTMLFileAdapter.h"

#include "core/system/WholeFile.h"

namespace overmarks
{

void HTMLFileAdapter::initWithCallerObject (ZEP::Overmarks::EventPDFExporter*) {}

void HTMLFileAdapter::exportHTMLString (const std::string& html, const std::string& toFilePath)
{
    const juce::File file { juce::String::fromUTF8 (toFilePath.c_str()) };
    const auto result = ZEP::Core::WholeFile::write (file, html);
    reason = result.getErrorMessage().fromFirstOccurrenceOf (file.getFullPathName() + ": ", false, false);
}

} // namespace overmarks
