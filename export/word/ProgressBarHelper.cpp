// SPDX-License-Identifier: GPL-3.0-only
#include "export/word/ProgressBarHelper.h"

#include "export/word/DocxHandlerProtocol.h"
#include "export/word/EventWordExporter.h"

namespace ZEP::Overmarks
{
namespace
{

constexpr int pollInterval = 200; // milliseconds
constexpr int done = 100;         // per cent

} // namespace

ProgressBarHelper::ProgressBarHelper (EventWordExporter* wordExporter,
                                      EventExporter::Delegate* exportDelegate, int numberOfFiles)
    : juce::Thread ("Progress Bar Helper"),
      delegate (exportDelegate),
      exporter (wordExporter),
      numFiles (numberOfFiles)
{
    if (exporter != nullptr)
        startThread();
}

ProgressBarHelper::~ProgressBarHelper() { stopThread (-1); }

void ProgressBarHelper::run()
{
    const auto paths = exporter != nullptr ? exporter->getComFilePaths() : std::vector<juce::String>();
    const auto file = paths.empty() ? juce::File() : juce::File (paths.front());

    while (! threadShouldExit())
    {
        if (exporter != nullptr && exporter->cancelled)
            signalThreadShouldExit();

        sleep (pollInterval);

        if (file.existsAsFile())
        {
            if (! look (file))
                break;
        }
        else if (exporter == nullptr)
        {
            signalThreadShouldExit();
        }
    }
}

/** False if the file can't be opened. A line that is just being written tells no level. */
bool ProgressBarHelper::look (const juce::File& progressFile)
{
    const auto line = DocxHandlerProtocol::firstLineOf (progressFile);

    if (! line.has_value())
        return false;

    if (const auto level = DocxHandlerProtocol::levelOfLine (*line))
        tell (*level);

    return true;
}

void ProgressBarHelper::tell (int level)
{
    if (delegate == nullptr)
        return;

    const auto files = static_cast<juce::int64> (numFiles) * level / done;
    delegate->progressChanged (exporter, static_cast<int> (files), numFiles);

    if (level == done)
        signalThreadShouldExit();
}

} // namespace ZEP::Overmarks
