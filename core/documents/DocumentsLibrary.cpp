// SPDX-License-Identifier: GPL-3.0-only
#include "core/documents/DocumentsLibrary.h"

#include "core/system/OwnPath.h"
#include "core/system/ProcessLifetime.h"
#include "core/text/TextDecoding.h"

#include <dlfcn.h>

namespace ZEP::Core
{

// Null unless its objects are linked with these. A second copy of them would come with a second copy of all that they use.
extern "C" __attribute__ ((weak)) const DocumentOperations* overmarksDocuments();

namespace
{

std::string besideThis (const char* name)
{
    const auto path = ownPath();
    return path.substr (0, path.rfind ('/') + 1) + name;
}

} // namespace

const DocumentsLibrary& DocumentsLibrary::loaded()
{
    static const ProcessLifetime<DocumentsLibrary> library (besideThis (OVERMARKS_DOCUMENTS_FILE));
    return library.get();
}

DocumentsLibrary::DocumentsLibrary (const std::string& path)
{
    auto* entry = &overmarksDocuments;

    if (entry == nullptr)
    {
        // Nothing in it has to be found by libraries that come later. It can't be unloaded, since the libraries it brings along keep
        // threads' data and types of their own.
        auto* const library = dlopen (path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);

        if (library != nullptr)
            entry = reinterpret_cast<decltype (entry)> (dlsym (library, "overmarksDocuments"));
    }

    if (entry != nullptr)
        found = entry();
    else
        words = juce::String ("The library for workbooks and drawn pages can't be loaded: ")
                + decodedUTF8 (dlerror());
}

std::unique_ptr<DocumentPages> DocumentsLibrary::pages (PaperSize paper) const
{
    return found != nullptr ? found->draw (paper) : std::make_unique<DocumentPages> (words);
}

} // namespace ZEP::Core
