// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <sstream>
#include <string>
#include <vector>

/** The rules of delimited text one after the other, byte by byte and without a thought for speed: what CSVParser has to agree
    with on every file. */
class SlowCSVParser final
{
public:
    using Row = std::vector<std::string>;

    std::vector<Row> parsedRows;
    bool outsideQuotes = true;
    int minConsistentLines = 5;

    void parse (std::string content)
    {
        if (content.empty())
            return;

        replaceAll (content, "\r", "\n");
        replaceAll (content, "\n\n", "\n");
        replaceAll (content, "\n\n", "\n");

        const char delimiters[] = { ',', ';', '\t' };
        for (int candidate = 0; candidate < 3; ++candidate)
        {
            if (parsedRows.size() == 1)
                return;

            const bool consistent = tryDelimiter (content, delimiters[candidate]);

            if (candidate == 2 && ! consistent && parsedRows.size() >= 2)
                parsedRows.clear();
            if (consistent)
                return;
        }
    }

    Row parseRow (const std::string& line, char delimiter)
    {
        Row row;
        std::string cell;
        for (std::size_t i = 0; i < line.size(); ++i)
        {
            const char byte = line[i];
            const bool nextIsQuote = i + 1 < line.size() && line[i + 1] == '"';

            if (byte == '"' && outsideQuotes)
                outsideQuotes = false;
            else if (byte == '"' && nextIsQuote)
                cell += line[++i];
            else if (byte == '"')
                outsideQuotes = true;
            else if (outsideQuotes && byte == delimiter)
            {
                row.push_back (cell);
                cell.clear();
            }
            else if (outsideQuotes && (byte == '\r' || byte == '\n'))
            {
                row.push_back (cell);
                return row;
            }
            else
                cell += byte;
        }
        row.push_back (cell);
        return row;
    }

private:
    static void replaceAll (std::string& text, const std::string& from, const std::string& to)
    {
        for (auto at = text.find (from); at != std::string::npos; at = text.find (from, at + to.size()))
            text.replace (at, from.size(), to);
    }

    bool tryDelimiter (const std::string& content, char delimiter)
    {
        std::istringstream stream (content);
        parsedRows.clear();
        int columnCount = -1;
        bool consistent = false;
        int lineNumber = 0;
        Row row;
        std::string line;

        while (std::getline (stream, line))
        {
            if (outsideQuotes)
            {
                row = parseRow (line, delimiter);
                if (! outsideQuotes)
                    continue;
            }
            else
            {
                const auto continuation = parseRow (line, delimiter);
                if (! continuation.empty() && ! row.empty())
                    row.back() += continuation.front();
            }

            if (row.size() == 1)
                break;

            const int cells = static_cast<int> (row.size());
            if (columnCount == -1)
                columnCount = cells;
            else if (cells == columnCount)
                consistent = true;
            else if (lineNumber < minConsistentLines)
            {
                parsedRows.clear();
                break;
            }
            else
                while (static_cast<int> (row.size()) <= columnCount)
                    row.push_back ("");

            bool anyText = false;
            for (const auto& cell : row)
                anyText = anyText || ! cell.empty();
            if (anyText)
                parsedRows.push_back (row);

            ++lineNumber;
        }
        return consistent;
    }
};
