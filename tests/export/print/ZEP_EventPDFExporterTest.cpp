// SPDX-License-Identifier: GPL-3.0-only
#include "export/print/ZEP_EventPDFExporter.h"

#include "export/print/PrintSupport.h"

using namespace ExportSupport;

namespace
{

TEST_F (PrintTest, smoke)
{
    settings->events = events ({ { "A1", oneHour, oneHour + 50, "", "Hello there" } });
    EventPDFExporter exporter (settings);
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    for (const auto& f : exporter.printFailures)
        ADD_FAILURE() << f.reason;
    const PrintedPDF document ((folder.path / "Reel 2.pdf").string());
    ASSERT_TRUE (document.isValid());
    std::cerr << document.text() << document.width() << "x" << document.height() << "\n";
    std::filesystem::copy (folder.path / "Reel 2.pdf", "/tmp/html/smoke.pdf",
                           std::filesystem::copy_options::overwrite_existing);
}

} // namespace
