// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <string>
#include <vector>

namespace ExportSupport
{

/** Answers every command, asks for the page as a browser does, and prints a document of one line; what it does at a command may
    be replaced. */
inline const std::string wellBehaved = R"(
say() { printf '%s\0' "$1" >&4; }
answer() { say "{\"id\":$1,\"result\":$2}"; }
ask() { say "{\"method\":\"Fetch.requestPaused\",\"params\":{\"requestId\":\"R\",\"request\":{\"url\":\"$page\"}$1}}"; }
loaded() { say "{\"method\":\"Page.lifecycleEvent\",\"sessionId\":\"S\",\"params\":{\"name\":\"load\",\"loaderId\":\"$1\"}}"; }
while IFS= read -r -d '' message <&3; do
    id=${message#*\"id\":}; id=${id%%,*}
    result='{}'
    case $message in
        *Target.createTarget*) result='{"targetId":"T"}' ;;
        *Target.attachToTarget*) result='{"sessionId":"S"}' ;;
        *Fetch.enable*) AT_RULES : ;;
        *Page.navigate*) AT_LOAD navigation=$id; page=${message#*\"url\":\"}; page=${page%%\"*}; ask; continue ;;
        *Fetch.continueRequest*) AT_ASKED answer $id '{}'; ask ',"responseStatusCode":200'; continue ;;
        *Fetch.continueResponse*)
            answer $id '{}'; AT_SHOWN answer $navigation '{"frameId":"F","loaderId":"L"}'; AT_LOADED loaded L; continue ;;
        *Page.printToPDF*) AT_PRINT result='{"stream":"1"}' ;;
        *IO.read*) AT_READ result='{"data":"%PDF-1.4 printed","eof":true}' ;;
    esac
    answer $id "$result"
done
)";

inline const std::vector<std::string> places { "AT_RULES",  "AT_LOAD",  "AT_ASKED", "AT_SHOWN",
                                               "AT_LOADED", "AT_PRINT", "AT_READ" };

inline std::string replaced (std::string text, const std::string& from, const std::string& to)
{
    for (auto at = text.find (from); at != std::string::npos; at = text.find (from, at + to.size()))
        text.replace (at, from.size(), to);

    return text;
}

inline std::string browserThat (const std::string& place, const std::string& does)
{
    auto script = wellBehaved;

    for (const auto& each : places)
        script = replaced (script, each + " ", each == place ? does + "; " : "");

    return script;
}

} // namespace ExportSupport
