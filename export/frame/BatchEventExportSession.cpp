// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/BatchEventExportSession.h"

#include "core/system/Logger.h"
#include "export/frame/EventExporterFactory.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <utility>

namespace ZEP::Overmarks
{

using ZEP::Core::Logger;

namespace
{

double steadySeconds()
{
    using namespace std::chrono;
    const auto now = duration_cast<nanoseconds> (steady_clock::now().time_since_epoch());
    return static_cast<double> (now.count()) / 1e9;
}

juce::String wordsFor (EventExportType type, const std::exception& error)
{
    return "Error exporting document with type: " + exportTypeName (type) + ": "
           + juce::String::fromUTF8 (error.what());
}

/** Runs the walk that the content of the settings asks for. @returns the text of the error */
juce::String runExporter (EventExporter& exporter)
{
    try
    {
        return exporter.settings->events.empty() ? exporter.exportEventsByCharacter()
                                                 : exporter.exportEventsByTimecode();
    }
    catch (const std::exception& error)
    {
        const auto words = wordsFor (exporter.type(), error);
        Logger::error (words);
        return words;
    }
}

} // namespace

BatchEventExportSession::BatchEventExportSession (SettingsSets sets)
    : juce::Thread ("Batch Event Export"),
      makeExporter (EventExporterFactory::eventExporter),
      settingsSets (std::move (sets))
{
}

BatchEventExportSession::~BatchEventExportSession() { stopThread (-1); }

void BatchEventExportSession::start()
{
    if (isBegun.exchange (true))
        return;

    if (! startThread())
    {
        Logger::error ("There is no thread for the batch; its caller waits for it");
        run();
    }
}

void BatchEventExportSession::cancel()
{
    std::shared_ptr<EventExporter> exporter;

    {
        const std::scoped_lock lock (exporterLock);
        cancelled = true;
        exporter = currentExporter;
    }

    if (exporter != nullptr)
        exporter->cancel();
}

void BatchEventExportSession::run()
{
    int total = 0;

    for (const auto& settings : settingsSets)
        if (settings != nullptr)
            total += std::max (static_cast<int> (settings->eventsByCharacter.size()), 1);

    totalSteps = total;

    for (const auto& settings : settingsSets)
    {
        if (cancelled)
        {
            if (delegate != nullptr)
                delegate->batchCancelled();

            return;
        }

        if (settings != nullptr)
            exportDocument (settings);
    }

    if (delegate != nullptr)
        delegate->batchFinished();
}

int BatchEventExportSession::stepsOf (const EventExportSettingsSet& settings)
{
    return settings.events.empty() ? static_cast<int> (settings.eventsByCharacter.size()) : 1;
}

std::shared_ptr<EventExporter> BatchEventExportSession::takeExporterFor (
    const std::shared_ptr<EventExportSettingsSet>& settings)
{
    auto exporter = makeExporter (settings);
    const std::scoped_lock lock (exporterLock);
    currentExporter = exporter;

    // Somebody may have cancelled while there was no exporter yet to be told.
    if (exporter != nullptr && cancelled)
        exporter->cancel();

    return exporter;
}

void BatchEventExportSession::exportDocument (const std::shared_ptr<EventExportSettingsSet>& settings)
{
    try
    {
        writeDocument (settings);
    }
    catch (const std::exception& error) // of the application's own functions
    {
        Logger::error (wordsFor (settings->exportType, error));
    }

    completedSteps += stepsOf (*settings);
    tellProgress (completedSteps);
}

void BatchEventExportSession::writeDocument (const std::shared_ptr<EventExportSettingsSet>& settings)
{
    const auto exporter = takeExporterFor (settings);
    const auto typeName = exportTypeName (settings->exportType);

    if (exporter == nullptr)
    {
        Logger::error ("There is no exporter for a document with type: " + typeName);
        return;
    }

    exporter->delegate = this;
    const auto start = steadySeconds();
    const auto error = runExporter (*exporter);
    Logger::debug ("Exporting document with type: " + typeName
                   + " took : " + juce::String (steadySeconds() - start));

    if (exportEnded)
        exportEnded (*exporter, error);
}

void BatchEventExportSession::progressChanged (EventExporter*, int current, int)
{
    tellProgress (completedSteps + current);
}

void BatchEventExportSession::tellProgress (int current)
{
    if (delegate != nullptr)
        delegate->batchProgressChanged (current, totalSteps);
}

} // namespace ZEP::Overmarks
