// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/documents/DocumentOperations.h"

#include <juce_core/juce_core.h>

#include <memory>
#include <string>

namespace ZEP::Core
{

/** libZEP_Documents, which reads and writes workbooks and draws pages.

    It lies beside the library of this class and is loaded when a workbook or a page is first asked for: two thirds of the libraries that
    a program would have to load at its start are for these alone, and most commands of a batch need neither. It then stays for the
    life of the process. A program that is linked with its objects, such as a test, has no need of the file.

    Any thread. */
class DocumentsLibrary final
{
public:
    /** Loads it, the first time. Where that fails it is tried again the next time: a process may have too many open files for a moment. One
        of another version, or of something else, stays refused for the life of the process. */
    static DocumentsLibrary loaded();

    /** None where it can't be loaded. */
    [[nodiscard]] const DocumentOperations* operations() const noexcept { return found; }

    /** Why it can't be loaded, for the user; else empty. */
    [[nodiscard]] const juce::String& failure() const noexcept { return words; }

    /** Pages that draw or, where that can't be loaded, say so in the end. */
    [[nodiscard]] std::unique_ptr<DocumentPages> pages (PaperSize paper) const;

    /** Loads the library of a path; `loaded()` is what has the right one. */
    explicit DocumentsLibrary (const std::string& path);

private:
    DocumentsLibrary() = default;

    const DocumentOperations* found = nullptr;
    juce::String words;
};

} // namespace ZEP::Core
