// SPDX-License-Identifier: GPL-3.0-only
#include "core/documents/DocumentsLibrary.h"

#include "core/system/OwnPath.h"
#include "core/text/TextDecoding.h"

#include <dlfcn.h>
#include <mutex>
#include <string_view>

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

DocumentsLibrary DocumentsLibrary::loaded()
{
    static std::mutex guard;
    static const DocumentOperations* known = nullptr;
    const std::lock_guard lock (guard);

    if (known == nullptr)
    {
        const DocumentsLibrary library (besideThis (OVERMARKS_DOCUMENTS_FILE));
        known = library.found;
        return library;
    }

    DocumentsLibrary library;
    library.found = known;
    return library;
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

    constexpr auto cantBeLoaded = "The library for workbooks and drawn pages can't be loaded: ";

    if (entry == nullptr)
        words = juce::String (cantBeLoaded) + decodedUTF8 (dlerror());
    else if (entry()->version != std::string_view (OVERMARKS_VERSION_STRING))
        words = juce::String (cantBeLoaded) + "it is of version " + entry()->version
                + ", and libZEP_Core of " OVERMARKS_VERSION_STRING;
    else
        found = entry();
}

std::unique_ptr<DocumentPages> DocumentsLibrary::pages (PaperSize paper) const
{
    return found != nullptr ? found->draw (paper) : std::make_unique<DocumentPages> (words);
}

} // namespace ZEP::Core
