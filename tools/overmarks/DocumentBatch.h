// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "DocumentOptions.h"
#include "Session.h"
#include "StopSignals.h"

#include "export/frame/EventExporter.h"

#include <juce_core/juce_core.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace overmarks
{

class Progress;
class StagingFolder;

/** The documents that one command writes of a list, all into one folder.

    Nothing of the user's is touched before every document is finished, and where one can't be put in its place the others
    are taken away again: what is refused or fails leaves the folder as it was. A document that was left out because a
    question was answered with no is no failure, and one that can't be printed, for want of a browser for example, holds up
    nothing: the others are written. So are those that were finished when the user stopped the work. */
class DocumentBatch final
{
public:
    /** @param folderOfDocuments  where they will stand
        @param pathOfSource       the list that they are made from, which is never overwritten */
    DocumentBatch (const DocumentOptions& documentOptions, const juce::File& folderOfDocuments,
                   std::string pathOfSource);

    /** Adds a document, or one for each character.
        @param baseName   of its files
        @param extension  of its files, with its dot, whatever is usual for the format */
    void add (const DocumentFormat& format, const juce::String& baseName, const juce::String& extension);

    /** Adds a document under its format's name and the usual extension. */
    void add (const DocumentFormat& format, const juce::String& baseName);

    /** Writes them; in a dry run it only finds out whether they could be. One that was left out because a question was
        answered with no is reported; that there is nothing to write, for want of events, is said.
        @returns the files that were, or would be, written. Throws CommandFailure */
    std::vector<juce::File> write (const ZEP::Overmarks::Project& project, Session& session) const;

private:
    struct Order
    {
        const DocumentFormat* format;
        juce::String baseName;
        juce::String extension;
    };

    struct Work;

    /** A document that lies in the staging folder. */
    struct Finished
    {
        juce::File made;
        juce::File target;
        bool goesIntoPipe;      ///< or into a device
        bool isWritten = false; ///< there
    };

    Work workFor (const Order& order, const ZEP::Overmarks::Project& project) const;
    static std::vector<Finished> finishedOf (const std::vector<Work>& works, const StagingFolder& stage,
                                             Session& session);
    static void writeIntoPipes (std::vector<Finished>& finished, const StagingFolder& stage,
                                std::optional<StopSignals::Patience>& patience);
    static std::vector<juce::File> moveIntoPlace (const std::vector<Finished>& finished,
                                                  const StagingFolder& stage, Session& session);
    void refuse (const std::vector<Work>& works) const;
    void sayWhatWouldBeAsked (const std::vector<Work>& works, const Session& session) const;
    bool isByCharacter (const DocumentFormat& format) const;
    void writeWordDocuments (const Work& work, Progress& progress, const juce::File& stage,
                             int filesBefore) const;
    std::shared_ptr<ZEP::Overmarks::EventExporter> exporterFor (
        const Work& work, const std::function<bool (const juce::String&)>& ask) const;
    bool isPartOfBatch (const Work& work) const;
    void writeBeforeBatch (Work& work, Progress& progress, const StagingFolder& stage, int stepsBefore) const;
    void takeResult (Work& work, ZEP::Overmarks::EventExporter& exporter, juce::String error,
                     const juce::File& stage) const;
    void makeDocuments (std::vector<Work>& works, const StagingFolder& stage, Session& session) const;
    void writeBatch (const std::vector<Work*>& works, Progress& progress, int stepsBefore,
                     const StagingFolder& stage) const;

    const DocumentOptions& options;
    juce::File folder;
    std::string source;
    std::vector<Order> orders;
};

} // namespace overmarks
