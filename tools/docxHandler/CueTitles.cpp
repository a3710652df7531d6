// SPDX-License-Identifier: GPL-3.0-only
#include "CueTitles.h"

#include "CharacterText.h"
#include "TimecodeText.h"

#include <algorithm>
#include <initializer_list>
#include <string>

namespace DocxHandler
{

namespace
{

/* What a title may mean. Of two titles that mean the same the one with the lower rank is taken: "Translation" before
   "Original", "Character" before "Speaker". */
struct Meaning
{
    Role role = Role::text;
    int rank = 0;
};

using Meanings = std::multimap<std::string, Meaning, std::less<>>;

void add (Meanings& meanings, Meaning meaning, std::initializer_list<const char*> titles)
{
    for (const auto* title : titles)
    {
        const auto key = skeleton (title);
        const auto [first, last] = meanings.equal_range (key);

        if (std::none_of (first, last,
                          [&meaning] (const auto& known) { return known.second.role == meaning.role; }))
            meanings.emplace (key, meaning);
    }
}

void addTimes (Meanings& meanings)
{
    add (meanings, { Role::inPoint, 0 },
         { "Start",      "Start TC",  "Start Timecode", "Start Time", "TC Start",  "TC In",     "Timecode In",
           "Time In",    "In",        "In TC",          "In Point",   "From",      "Beginn",    "Anfang",
           "Startzeit",  "TC Beginn", "TC Anfang",      "Von",        "Début",     "Debut",     "TC début",
           "TC debut",   "Entrée",    "Entree",         "TC entrée",  "Inicio",    "TC inicio", "Entrada",
           "TC entrada", "Inizio",    "TC inizio",      "Entrata",    "TC entrata" });
    add (meanings, { Role::inPoint, 1 }, { "TC", "Timecode", "Time", "Zeit", "Code temporel" });
    add (meanings, { Role::outPoint, 0 },
         { "End",      "End TC",    "End Timecode", "End Time",  "TC End",  "TC Out", "Timecode Out",
           "Time Out", "Out",       "Out TC",       "Out Point", "To",      "Stop",   "Ende",
           "Endzeit",  "TC Ende",   "Bis",          "Fin",       "TC fin",  "Sortie", "TC sortie",
           "Salida",   "TC salida", "Final",        "Fine",      "TC fine", "Uscita", "TC uscita" });
    add (meanings, { Role::bothPoints, 0 }, { "In/Out", "TC In/Out", "Start/End", "Timecodes", "Von/Bis" });
    add (meanings, { Role::duration, 0 },
         { "Duration", "Dur", "Length", "Len", "Dauer", "Länge", "Durée", "Duree", "Duración", "Duracion",
           "Durata" });
}

void addWords (Meanings& meanings)
{
    add (meanings, { Role::number, 0 },
         { "Number", "Cue", "Cue Number", "Cue No", "Cue Nr", "Cue ID", "No", "Nr", "ID", "Loop", "Num",
           "Nummer", "Take-Nr", "Numéro", "Numero", "Número", "N°" });
    add (meanings, { Role::character, 0 },
         { "Character", "Character Name", "Char", "Role", "Rolle", "Figur", "Personnage", "Rôle", "Personaje",
           "Personaggio" });
    add (meanings, { Role::character, 1 }, { "Name", "Speaker", "Sprecher", "Sprecherin" });
    add (meanings, { Role::text, 0 },
         { "Text", "Cue Text", "Dialogue", "Dialog", "Line", "Lines", "Script", "Subtitle", "Texte",
           "Réplique", "Replique", "Texto", "Diálogo", "Dialogo", "Testo", "Battuta" });
    add (meanings, { Role::text, 1 },
         { "Translation", "Adaptation", "Übersetzung", "Uebersetzung", "Traduction", "Traducción",
           "Traduzione" });
    add (meanings, { Role::text, 2 },
         { "Cue", "English", "German", "French", "Spanish", "Italian", "Deutsch" });
    add (meanings, { Role::text, 3 }, { "Original", "Source", "Originaltext" });
    add (meanings, { Role::notes, 0 },
         { "Notes", "Note", "Comment", "Comments", "Remarks", "Bemerkung", "Bemerkungen", "Anmerkung",
           "Anmerkungen", "Notiz", "Notizen", "Remarque", "Remarques", "Notas", "Observaciones", "Commenti",
           "Osservazioni" });
    add (meanings, { Role::engineeringNotes, 0 }, { "Eng. Notes", "Engineering Notes", "Engineer Notes" });
    add (meanings, { Role::reason, 0 }, { "Reason", "Grund", "Raison", "Motivo" });
    add (meanings, { Role::region, 0 }, { "Region", "FN Region", "Forced Narrative Region" });
}

const Meanings& meaningsOfTitles()
{
    static const auto all = []
    {
        Meanings meanings;
        addTimes (meanings);
        addWords (meanings);
        return meanings;
    }();
    return all;
}

/* The rank of a title for a role; negative if it doesn't mean that. */
int rankOf (const std::string& title, Role role)
{
    if (title == "#")
        return role == Role::number ? 0 : -1;

    const auto [first, last] = meaningsOfTitles().equal_range (skeleton (title));
    const auto found =
        std::find_if (first, last, [role] (const auto& meaning) { return meaning.second.role == role; });
    return found == last ? -1 : found->second.rank;
}

/* The best of the titles that have no role yet, from left to right. */
void assign (Role role, const std::map<int, std::string>& words, Titles& titles)
{
    TitledColumns* best = nullptr;
    int lowest = 0;

    for (auto& [column, title] : titles)
        if (const auto rank = rankOf (words.at (column), role);
            ! title.role && rank >= 0 && (best == nullptr || rank < lowest))
        {
            best = &title;
            lowest = rank;
        }

    if (best != nullptr)
        best->role = role;
}

} // namespace

bool holdsRole (const Titles& titles, Role role)
{
    return std::any_of (titles.begin(), titles.end(),
                        [role] (const auto& title) { return title.second.role == role; });
}

Titles titlesOf (const Row& row)
{
    std::map<int, std::string> words;
    Titles titles;

    for (const auto& cell : row.cells)
    {
        const auto text = joinedText (cell.paragraphs).text;

        if (! findTimecodes (text).empty())
            return {};

        if (cell.isBlank())
            continue;

        words.emplace (cell.column, trimmed (text));
        titles.emplace (cell.column, TitledColumns { {}, cell.column + cell.span });
    }

    for (int role = 0; role <= static_cast<int> (Role::duration); ++role)
        assign (static_cast<Role> (role), words, titles);

    const auto known = std::count_if (titles.begin(), titles.end(),
                                      [] (const auto& title) { return title.second.role.has_value(); });
    const auto tellsCues = holdsRole (titles, Role::text) || holdsRole (titles, Role::inPoint)
                           || holdsRole (titles, Role::bothPoints);
    return known >= 2 && tellsCues ? titles : Titles();
}

const TitledColumns* titleAt (const Titles& titles, int column)
{
    const auto next = titles.upper_bound (column);

    if (next == titles.begin() || std::prev (next)->second.end <= column)
        return nullptr;

    return &std::prev (next)->second;
}

} // namespace DocxHandler
