"use strict";
// The page of a migration report.
//
// One element, #report, holds the facts about all files; it is read at the start. The findings and
// the commands of a file lie in an element of their own, which nobody reads before that file is
// chosen or may hold what is searched for. The address (#file=...&command=...) says what is open:
// whatever opens or closes something changes the address, and FollowAddress alone brings the page
// in line with it.
//
// A report that is too large for one page is an index of all files, which has no elements but #report,
// and parts, pages such as any other of some of the files. The index leads to the part of a file with
// the same address.
//
// Texts from files reach the page as text nodes only, never as markup.

const kRowHeight = 36;         // pixels; --row in the styles
const kSpareRows = 8;          // rows drawn above and below those in sight
const kPrintedRows = 1000;     // a printed list that is longer than this serves nobody
const kFindingsAtOnce = 100;
const kRowsAtOnce = 100;       // that a short table grows by
const kCommandsPerPage = 100;  // keeps the page small however many commands a file has
const kNameEnd = 10;           // characters of a file's name that are never cut off
const kLinesAtOnce = 1000;     // of one command's text
const kHighlightedLength = 5000;  // characters; colors in longer lines cost more than they help

const kFileOutcomes = new Map([
    ["converted", {label: "Converted", tone: "good"}],
    ["changed", {label: "Changed", tone: "partly"}],
    ["partly", {label: "Partly converted", tone: "partly"}],
    ["unconverted", {label: "Unconverted", tone: "bad"}],
    ["overlooked", {label: "Overlooked", tone: "bad"}],
    ["stopped", {label: "Stopped", tone: "stopped"}],
    ["failed", {label: "Failed", tone: "bad"}],
    ["nothing-to-convert", {label: "Nothing to do", tone: "idle"}],
    ["copied", {label: "Copied", tone: "copied"}],
    ["skipped", {label: "Skipped", tone: "idle"}],
]);
const kCommandOutcomes = new Map([
    ["converted", {label: "Converted", tone: "good"}],
    ["failed", {label: "Failed", tone: "bad"}],
    ["unreadable", {label: "Unreadable", tone: "stopped"}],
]);
const kFindingKinds = new Map([
    ["overlooked", {label: "Overlooked", tone: "bad"}],
    ["changed", {label: "Changed", tone: "partly"}],
    ["told", {label: "Worth knowing", tone: "copied"}],
]);
// Of calls of macros.
const kCallOutcomes = new Map([
    ["converted", {label: "Converted", tone: "good"}],
    ["failed", {label: "Failed", tone: "bad"}],
    ["left", {label: "Not expanded", tone: "stopped"}],
    ["nothing", {label: "No legacy command", tone: "idle"}],
]);
const kReasons = new Map([
    /* reasons */
]);
// What helps against each reason, whatever the command.
const kAdvice = new Map([
    /* advice */
]);
const kEncodings = new Map([
    ["utf-8", "UTF-8"], ["windows-1252", "Windows-1252"], ["system", "system code page"],
]);
// Why a file was read as it was.
const kReadingReasons = new Map([
    ["option", "given by an option"], ["pattern", "given for its name"],
    ["first-line", "named in its first line"], ["byte-order-mark", "by its byte-order mark"],
    ["valid-utf-8", ""], ["locale", "that of the locale"],
    ["default", ""], ["reads-well", "in which it reads well"], ["layout", "as in all batch layout"],
]);
const kBlankLines = new Map([
    ["mean-nothing", "mean nothing"], ["end-commands", "end commands"],
]);
// Lists that start with what there is most of are what people look for; names start at A.
const kColumns = [
    {key: "path", label: "File", numeric: false, rank: (file) => file.index},
    {key: "outcome", label: "Outcome", numeric: false, rank: (file) => OutcomeRank(file)},
    {key: "converted", label: "Converted", numeric: true, rank: (file) => Count(file.converted),
     style: "spare"},
    {key: "overlooked", label: "Overlooked", numeric: true,
     rank: (file) => Count(file.overlooked), style: "rare"},
    {key: "failed", label: "Failed", numeric: true, rank: (file) => FailedIn(file),
     style: "rare"},
    {key: "warnings", label: "Warnings", numeric: true, rank: (file) => Count(file.warnings),
     style: "spare"},
    {key: "bytes", label: "Size", numeric: true, rank: (file) => Count(file.bytes),
     style: "spare"},
];

let g_report = null;
const g_fileOfKey = new Map();
const g_list = {
    shown: [],         // the files that match, in order
    active: 0,         // the row that the arrow keys are on
    column: kColumns[0],
    descending: false,
    printing: false,
};
const g_open = {
    file: null,
    findings: [],      // of that file
    macros: [],
    commands: [],
    signable: new Map(),  // of these: by each of them how it is known, see EntriesOf
    changed: {mended: new Set(), new: new Set()},  // first lines
    listed: [],        // indices of those that match the filter
    page: 0,
    command: null,     // index
};

// ---- Small helpers ----

const kNumberFormat = new Intl.NumberFormat("en-US");

function Find(id) {
    return document.getElementById(id);
}

// Makes an element. `content` is a text, a node, or a list of them.
function Make(tag, className, content) {
    const element = document.createElement(tag);
    if (className) element.className = className;
    if (content !== undefined) element.append(...[content].flat());
    return element;
}

function MakeButton(text, action) {
    const button = Make("button", "action", text);
    button.type = "button";
    button.addEventListener("click", action);
    return button;
}

// A fact that is missing counts as none.
function Count(value) {
    return Number.isFinite(value) ? value : 0;
}

function FormatNumber(value) {
    return kNumberFormat.format(Count(value));
}

function Plural(count, one, many) {
    return `${FormatNumber(count)} ${count === 1 ? one : many}`;
}

function FormatBytes(bytes) {
    const units = ["KB", "MB", "GB", "TB"];
    let value = Count(bytes);
    if (value < 1000) return Plural(value, "byte", "bytes");
    let unit = -1;
    do {
        value /= 1000;
        ++unit;
    } while (value >= 999.95 && unit + 1 < units.length);
    return `${value.toFixed(1)} ${units[unit]}`;
}

// Rounded down: "100 %" means all of them.
function FormatShare(part, whole) {
    if (whole <= 0) return "";
    const tenths = Math.floor(part * 1000 / whole);
    if (tenths === 0 && part > 0) return "<\u00a00.1\u00a0%";
    return tenths === 1000 ? "100\u00a0%" : `${(tenths / 10).toFixed(1)}\u00a0%`;
}

function FormatSeconds(seconds) {
    const value = Count(seconds);
    if (value < 60) return `${value.toFixed(1)} s`;
    const whole = Math.round(value);
    const minutes = Math.floor(whole / 60);
    if (minutes < 60) return `${minutes} min ${whole % 60} s`;
    return `${FormatNumber(Math.floor(minutes / 60))} h ${minutes % 60} min`;
}

function FormatTime(date) {
    if (Number.isNaN(date.getTime())) return "";
    return date.toLocaleString("en-GB", {
        day: "numeric", month: "long", year: "numeric", hour: "2-digit", minute: "2-digit",
        timeZone: "UTC",
    }) + " UTC";
}

function CodeOf(character) {
    return "U+" + character.codePointAt(0).toString(16).toUpperCase().padStart(4, "0");
}

// Characters without a shape, and those that turn the direction of a text around, could make one
// name look like another.
const kInvisible =
    /[\u0000-\u001f\u007f-\u009f\u061c\u200b\u200e\u200f\u2028-\u202e\u2060-\u2069\ufeff]/g;

function Visible(text) {
    const pictures = {"\n": "\u240a", "\r": "\u240d", "\t": "\u2409"};
    return text.replace(kInvisible, (c) => pictures[c] || `\u27e8${CodeOf(c)}\u27e9`);
}

function LabelOfReason(name) {
    if (kReasons.has(name)) return kReasons.get(name);
    const words = name.replaceAll("-", " ");
    return Visible(words.charAt(0).toUpperCase() + words.slice(1));
}

// The names of findings are made to be read.
function LabelOfCode(code) {
    const words = String(code).replaceAll("-", " ");
    return Visible(words.charAt(0).toUpperCase() + words.slice(1));
}

function Outcome(outcomes, name) {
    return outcomes.get(name) || {label: Visible(String(name)), tone: "idle"};
}

function OutcomeBadge(outcomes, name) {
    const outcome = Outcome(outcomes, name);
    return Make("span", `outcome tone-${outcome.tone}`, outcome.label);
}

// What needs a person first.
function OutcomeRank(file) {
    const order = ["failed", "stopped", "overlooked", "unconverted", "partly", "changed", "skipped",
        "copied", "converted", "nothing-to-convert"];
    return order.indexOf(file.outcome);
}

function FailedIn(file) {
    return Count(file.failed) + Count(file.unreadable);
}

function AddFact(list, name, value) {
    if (value === "" || value === undefined || value === null) return;
    list.append(Make("div", "", [Make("dt", "", name), Make("dd", "", value)]));
}

function AddNotice(text) {
    Find("notices").append(Make("p", "notice", text));
}

// ---- The run as a whole ----

// Each legacy command is counted once.
function CommandCounts(totals) {
    return [
        [Count(totals.commandsConverted), "converted"], [Count(totals.commandsFailed), "failed"],
        [Count(totals.commandsUnreadable), "unreadable"],
        [Count(totals.commandsOverlooked), "overlooked"],
    ].filter(([count]) => count).map(([count, what]) => `${FormatNumber(count)} ${what}`);
}

function Verdict(totals) {
    const found = Count(totals.commandsFound);
    if (Count(totals.files) === 0) return "No files were found.";
    if (found === 0) return "No legacy command was found.";
    const changed = Count(totals.findingsChanged);
    const more = changed
        ? ` In ${Plural(changed, "place", "places")} other text was lost or joined.` : "";
    if (Count(totals.commandsConverted) === found) {
        const all = found === 1 ? "The one legacy command that was found was"
                                : `All ${FormatNumber(found)} legacy commands that were found were`;
        return `${all} converted.${more}`;
    }
    return `${Plural(found, "legacy command was", "legacy commands were")} found: ` +
        `${CommandCounts(totals).join(", ")}.${more}`;
}

function ShowRun() {
    const run = Find("run");
    AddFact(run, "Source", Visible(String(g_report.source || "")));
    AddFact(run, "Target", Visible(String(g_report.target || "")));
    AddFact(run, "Started", FormatTime(new Date(g_report.started)));
    AddFact(run, "Took", FormatSeconds(g_report.seconds));
    AddFact(run, "Layout", Visible(String(g_report.layout || "")));
    AddFact(run, "Made by", `quillet ${Visible(String(g_report.quilletVersion || ""))}`);
    Find("verdict").textContent = Verdict(g_report.totals);
    if (g_report.dryRun) {
        AddNotice("This was a dry run: no results were written. What follows is what a run " +
            "would have done.");
    }
    if (g_report.shard) {
        AddNotice(`This is slice ${FormatNumber(g_report.shard.index)} of ` +
            `${FormatNumber(g_report.shard.count)} of the archive; the other slices have ` +
            "reports of their own.");
    }
}

function AddCard(name, figure, aside, tone) {
    const card = Make("div", `card tone-${tone}`, [
        Make("dt", "", name), Make("dd", "figure", figure), Make("dd", "aside", aside)]);
    Find("cards").append(card);
}

function ShowCards() {
    const totals = g_report.totals;
    const failed = Count(totals.commandsFailed) + Count(totals.commandsUnreadable);
    const found = Count(totals.commandsFound);
    const unreadable = Count(totals.commandsUnreadable);
    const states = [["kept", totals.filesKept], ["edited", totals.filesEdited],
        ["orphaned", totals.filesOrphaned]];
    const told = states.filter(([, count]) => Count(count))
        .map(([name, count]) => `, ${FormatNumber(count)} ${name}`);
    AddCard("Files", FormatNumber(totals.files), FormatBytes(totals.bytes) + told.join(""),
        "copied");
    AddCard("Legacy commands", FormatNumber(found),
        `${FormatNumber(totals.commandsCopied)} others copied`, "copied");
    AddCard("Converted", FormatNumber(totals.commandsConverted),
        found ? `${FormatShare(totals.commandsConverted, found)} of ${FormatNumber(found)}` : "",
        "good");
    AddCard("Overlooked", FormatNumber(totals.commandsOverlooked),
        "not seen by the conversion", "bad");
    AddCard("Failed", FormatNumber(failed),
        unreadable ? `${FormatNumber(unreadable)} unreadable` : "", "bad");
    AddCard("Warnings", FormatNumber(totals.warnings), "what was left out", "partly");
}

// Fills a table that is a chart as well: each row has a bar beside its number.
// `rows` have a label, a count, a tone, an action if the label is to be a button, and the number of
// files if that is to be told instead of a share.
function FillChart(table, caption, heading, unit, rows) {
    const total = rows.reduce((sum, row) => sum + row.count, 0);
    const last = rows.some((row) => "files" in row) ? "Files" : "Share of all";
    const head = Make("tr", "", [heading, unit, last].map((text) => {
        const cell = Make("th", "", Make("span", "unseen", text));
        cell.scope = "col";
        return cell;
    }));
    const body = rows.map((row) => ChartRow(row, total));
    table.replaceChildren(Make("caption", "", caption), Make("thead", "", head),
        Make("tbody", "", body));
}

// A full bar is all there is, so that bars of two charts can be compared.
function ChartRow(row, whole) {
    let label = row.label;
    if (row.action) {
        label = MakeButton(row.label, row.action);
        label.className = "plain";
    }
    const name = Make("th", "", label);
    name.scope = "row";
    const fill = Make("span", `fill tone-${row.tone}`);
    fill.style.width = `${row.count * 100 / Math.max(whole, 1)}%`;
    const track = Make("span", "track", row.count ? fill : "");
    track.setAttribute("aria-hidden", "true");
    const amount = Make("span", "amount", FormatNumber(row.count));
    const measure = Make("div", "measure", [track, amount]);
    const last = "files" in row ? `in ${Plural(row.files, "file", "files")}`
                                : FormatShare(row.count, whole);
    return Make("tr", "", [name, Make("td", "", measure), Make("td", "", last)]);
}

function CountBy(names) {
    const counts = new Map();
    for (const name of names) counts.set(name, (counts.get(name) || 0) + 1);
    return counts;
}

// The names that a file has counts of, such as the reasons why its commands failed.
function NamesIn(counts) {
    return Object.keys(counts || {});
}

// How often each name occurs in all files. Not every name is a good one for a member.
function SumBy(member) {
    const sums = new Map();
    for (const file of g_report.files) {
        for (const [name, count] of Object.entries(file[member] || {})) {
            sums.set(name, (sums.get(name) || 0) + Count(count));
        }
    }
    return sums;
}

// The outcomes that occur, in the order of the table above, unknown ones last.
function OutcomesIn(counts) {
    const names = new Set([...kFileOutcomes.keys(), ...counts.keys()]);
    return [...names].filter((name) => counts.has(name));
}

function FileRows(counts) {
    return OutcomesIn(counts).map((name) => ({
        ...Outcome(kFileOutcomes, name), count: counts.get(name),
        action: () => FilterFiles("outcome", name),
    }));
}

function CommandRows() {
    const totals = g_report.totals;
    return [
        {label: "Converted", tone: "good", count: Count(totals.commandsConverted)},
        {label: "Failed", tone: "bad", count: Count(totals.commandsFailed)},
        {label: "Unreadable", tone: "stopped", count: Count(totals.commandsUnreadable)},
        {label: "Overlooked", tone: "bad", count: Count(totals.commandsOverlooked)},
    ];
}

// `files` tells in how many files each name occurs.
function ReasonRows(files) {
    return [...SumBy("errors")].sort((a, b) => b[1] - a[1]).map(([name, count]) => ({
        label: LabelOfReason(name), tone: "bad", count, files: files.get(name),
        action: () => FilterFiles("reason", name),
    }));
}

function FindingRows(files) {
    return [...SumBy("codes")].sort((a, b) => b[1] - a[1]).map(([code, count]) => ({
        label: LabelOfCode(code), tone: "partly", count, files: files.get(code),
        action: () => FilterFiles("finding", code),
    }));
}

function ShowCharts(outcomes, codes, reasons) {
    FillChart(Find("file-chart"), "Files by outcome", "Outcome", "Files", FileRows(outcomes));
    FillChart(Find("command-chart"), "Legacy commands by outcome", "Outcome", "Commands",
        CommandRows());
    FillChart(Find("finding-chart"), codes.size ? "Findings" : "No findings", "Finding",
        "Findings", FindingRows(codes));
    const caption = reasons.size ? "Failed commands by reason" : "No command failed";
    FillChart(Find("reason-chart"), caption, "Reason", "Commands", ReasonRows(reasons));
}

// ---- Equal failures ----

const kFirstGroups = 10;
const g_groups = {
    all: [],            // those with most commands first
    ofCommand: new Map(),  // "file/command", both from 0: {group, place}
    files: null,        // indices of the files of the one that was chosen
};

function PlaceKey(file, command) {
    return `${file}/${command}`;
}

function ReadGroups() {
    g_groups.all = [...(g_report.groups || [])];
    g_groups.all.sort((a, b) => b.places.length - a.places.length);
    for (const group of g_groups.all) {
        group.places.forEach(([file, command], place) => {
            g_groups.ofCommand.set(PlaceKey(file, command), {group, place});
        });
    }
}

function MakeHeadRow(texts) {
    return Make("thead", "", Make("tr", "", texts.map((text) => {
        const cell = Make("th", "", text);
        cell.scope = "col";
        return cell;
    })));
}

function ShowGroups() {
    Find("equal").hidden = g_groups.all.length === 0;
    Find("groups").replaceChildren(MakeHeadRow(["Reason", "Commands", "Files", "To look at"]),
        Make("tbody"));
    ShowMoreGroups();
}

// Adds rows for the next of `all` to a table, `first` of them to an empty one. The button shows more.
function AddRows(table, button, all, first, makeRow) {
    const body = table.tBodies[0];
    const shown = body.childElementCount;
    body.append(...all.slice(shown, shown + (shown ? kRowsAtOnce : first)).map(makeRow));
    const left = all.length - body.childElementCount;
    const next = Math.min(left, kRowsAtOnce);
    button.hidden = left <= 0;
    button.textContent = `Show ${FormatNumber(next)} more` +
        (left > next ? ` of ${FormatNumber(left)}` : "");
}

function ShowMoreGroups() {
    AddRows(Find("groups"), Find("more-groups"), g_groups.all, kFirstGroups, GroupRow);
}

function GroupRow(group) {
    const files = new Set(group.places.map(([file]) => file));
    const label = MakeButton(LabelOfReason(String(group.error)), () => FilterGroup(files));
    label.className = "plain";
    const name = Make("th", "", label);
    name.scope = "row";
    const [file, command] = group.places[0];
    const first = MakeButton("First command", () => Go(g_report.files[file], command));
    first.className = "plain";
    const mends = `One correction mends ${Plural(group.places.length, "command", "commands")}`;
    return Make("tr", "", [name, Make("td", "", mends),
        Make("td", "", `in ${Plural(files.size, "file", "files")}`), Make("td", "", first)]);
}

function FilterGroup(files) {
    ClearFilters();
    g_groups.files = files;
    UpdateFiles();
    Find("files").scrollIntoView();
    Find("grid").focus({preventScroll: true});
}

// What a command shares with others, and the way to the next of them; nothing for any other.
function EqualNote(index) {
    const found = g_groups.ofCommand.get(PlaceKey(g_open.file.index, index));
    if (!found) return [];
    const {group, place} = found;
    const [file, command] = group.places[(place + 1) % group.places.length];
    return [Make("p", "equal", [`One correction mends ${FormatNumber(group.places.length)} ` +
        `commands; this is number ${FormatNumber(place + 1)}. `,
        MakeButton("Next equal command", () => Go(g_report.files[file], command))])];
}

// ---- An index and its parts ----

const kFirstParts = 20;

function IsIndex() {
    return Array.isArray(g_report.parts);
}

function PartOf(file) {
    return IsIndex() ? g_report.parts[file.part] : undefined;
}

function FolderText(folder) {
    return folder ? Visible(String(folder)) : "the files in no folder";
}

// The index and its parts are about the same work, so the minutes go along.
function AddressOfPage(name) {
    return encodeURIComponent(name) + (g_work.changed.size ? `#${WithMinutes("")}` : "");
}

function MakePageLink(name, text) {
    const link = Make("a", "", text);
    link.dataset.page = name;
    link.href = AddressOfPage(name);
    return link;
}

function UpdatePageLinks() {
    for (const link of document.querySelectorAll("[data-page]")) {
        link.href = AddressOfPage(link.dataset.page);
    }
}

// What is found out in one part is not known to the others before the next run.
function ShowPart() {
    if (!g_report.index) return;
    const notice = Make("p", "notice", [
        `This is the part of a report that is about ${FolderText(g_report.folder)}. `,
        MakePageLink(String(g_report.index), "All files"), ". Whoever signs off commands " +
        "in several parts saves them in one, and adds the saved file in the next."]);
    Find("notices").append(notice);
}

function ShowParts() {
    Find("parts").hidden = !IsIndex();
    if (!IsIndex()) return;
    Find("search").parentElement.firstChild.textContent = "Search in names and messages";
    for (const part of g_report.parts) {
        Object.assign(part, {files: 0, found: 0, left: 0});
    }
    for (const file of g_report.files) {
        const part = PartOf(file);
        ++part.files;
        part.found += Count(file.found);
        part.left += FailedIn(file) + Count(file.overlooked);
    }
    Find("part-list").replaceChildren(
        MakeHeadRow(["Folder", "Files", "Commands found", "Not converted"]), Make("tbody"));
    ShowMoreParts();
}

function ShowMoreParts() {
    AddRows(Find("part-list"), Find("more-parts"), g_report.parts, kFirstParts, (part) => {
        const name = Make("th", "",
            MakePageLink(String(part.name), FolderText(part.folder)));
        name.scope = "row";
        return Make("tr", "", [name, ...[part.files, part.found, part.left].map((count) =>
            Make("td", "", FormatNumber(count)))]);
    });
}

// ---- Since the last run ----

// What has become of commands that are not converted, now or then.
const kChanges = new Map([
    ["mended", {label: "Mended", told: "converted now", tone: "good",
                holds: (file) => LinesChanged(file, "mended").length > 0}],
    ["new", {label: "New", told: "were converted or not there", tone: "bad",
             holds: (file) => LinesChanged(file, "new").length > 0}],
    ["stillFailing", {label: "Still failing", told: "not converted, as before", tone: "partly",
                      holds: (file) => StillFailing(file) > 0}],
    ["gone", {label: "Gone", told: "not there any more", tone: "idle",
              holds: (file) => LinesChanged(file, "gone").length > 0}],
]);

function LinesChanged(file, change) {
    return (file.changes || {})[change] || [];
}

function StillFailing(file) {
    return FailedIn(file) + Count(file.overlooked) - LinesChanged(file, "new").length;
}

function ShowSince() {
    const since = g_report.sinceLastRun;
    Find("since").hidden = !since;
    if (!since) return;
    Find("since-run").textContent = "Commands that have failed, are unreadable or were " +
        `overlooked, compared with the report of ${FormatTime(new Date(since.started))}.`;
    const rows = [...kChanges].map(([name, change]) => SinceRow(name, change, Count(since[name])));
    Find("since-sums").replaceChildren(MakeHeadRow(["What became of them", "Commands", "Files"]),
        Make("tbody", "", rows));
}

function SinceRow(name, {label, told, holds}, count) {
    const files = g_report.files.filter(holds).length;
    const button = MakeButton(label, () => FilterFiles("outcome", name));
    button.className = "plain";
    const heading = Make("th", "", [files ? button : label, `: ${told}`]);
    heading.scope = "row";
    return Make("tr", "", [heading, Make("td", "", FormatNumber(count)),
        Make("td", "", files ? `in ${Plural(files, "file", "files")}` : "")]);
}

// "mended" or "new" for a command, or a finding, that came to something else; "" for any other.
function ChangeOf(one) {
    const change = one.outcome === "converted" ? "mended" : "new";
    return g_open.changed[change].has(one.firstLine) ? change : "";
}

function ChangeBadge(one) {
    const change = kChanges.get(ChangeOf(one));
    return change ? Make("span", `change tone-${change.tone}`, change.label)
                  : Make("span", "change");
}

// ---- Work left ----
//
// How long it takes a person to look at one of each kind and to put it right. These are guesses to
// begin with: an office that has done some of the work knows better and changes them. What was
// changed stands in the address, so that a bookmark or a link keeps it, and in the table, which is
// printed with it.

// Each finding has a row; the page is not made otherwise.
const kUsualMinutes = new Map(Object.entries({
    "finding.after-stop": 5, "finding.data-lines": 5, "finding.macro-body": 45,
    "finding.layout": 2, "finding.open-comment": 3, "finding.comment-behind": 3,
    "finding.block-comment-before": 2, "finding.sign-before": 2, "finding.same-line": 2,
    "finding.open-command": 3, "finding.command-lost": 5, "finding.swallowed": 3,
    "finding.comment-dropped": 1, "finding.encoding-doubtful": 5, "finding.old-line-ends": 0,
    "finding.wide-text": 0, "finding.layout-unclear": 5, "finding.include": 2,
    "finding.macro-expanded": 0, "finding.macro-fault": 10,
    "failure.unclosed-literal": 5, "failure.igraph-not-expressible": 30,
    "failure.table-too-large": 45, "again.failure": 1, "note.warning": 2,
}));
const kMinutesOfOthers = new Map([["finding", 5], ["failure", 15]]);
const kMostMinutes = 100000;
const kFoldersAtOnce = 50;
const g_work = {
    kinds: [],           // {key, count, input, usual, time}, those that occur
    changed: new Map(),  // minutes by key
    repeats: new Map(),  // by file: by reason how many failures are equal to an earlier one
    folder: "",          // the one whose parts are summed up, with "/" at its end
};

function UsualMinutes(key) {
    return kUsualMinutes.get(key) ?? kMinutesOfOthers.get(key.slice(0, key.indexOf(".")));
}

function MinutesOf(key) {
    return g_work.changed.get(key) ?? UsualMinutes(key);
}

function FormatMinutes(minutes) {
    const whole = Math.round(minutes);
    if (whole < 60) return `${whole} min`;
    return `${FormatNumber(Math.floor(whole / 60))} h ${whole % 60} min`;
}

function LabelOfKind(key) {
    const name = key.slice(key.indexOf(".") + 1);
    if (key.startsWith("finding.")) return LabelOfCode(name);
    if (key.startsWith("failure.")) return LabelOfReason(name);
    return key === "again.failure" ? "Each further equal failure" : "Warning";
}

function CountRepeats() {
    for (const group of g_groups.all) {
        for (const [file] of group.places.slice(1)) {
            if (!g_work.repeats.has(file)) g_work.repeats.set(file, new Map());
            const ofFile = g_work.repeats.get(file);
            ofFile.set(group.error, (ofFile.get(group.error) || 0) + 1);
        }
    }
}

// Calls `take` with each kind of work that a file needs, and how often.
function ForEachKind(file, take) {
    for (const [code, count] of Object.entries(file.codes || {})) {
        take(`finding.${code}`, Count(count));
    }
    const repeats = g_work.repeats.get(file.index) || new Map();
    let again = 0;
    for (const [reason, count] of Object.entries(file.errors || {})) {
        const repeated = repeats.get(reason) || 0;
        again += repeated;
        take(`failure.${reason}`, Count(count) - repeated);
    }
    take("again.failure", again);
    take("note.warning", Count(file.warnings));
}

function MinutesOfFile(file) {
    let minutes = 0;
    ForEachKind(file, (key, count) => { minutes += count * MinutesOf(key); });
    return minutes;
}

function FillMinutes() {
    const counts = new Map();
    for (const file of g_report.files) {
        ForEachKind(file, (key, count) => counts.set(key, (counts.get(key) || 0) + count));
    }
    const order = ["finding", "failure", "again", "note"];
    const rank = (key) => order.indexOf(key.slice(0, key.indexOf(".")));
    g_work.kinds = [...counts].filter(([, count]) => count > 0)
        .sort((a, b) => rank(a[0]) - rank(b[0]) || b[1] - a[1])
        .map(([key, count]) => ({key, count}));
    Find("minutes").replaceChildren(Make("caption", "", "Minutes for one of each kind"),
        MakeHeadRow(["Kind", "Number", "Minutes each", "In all"]),
        Make("tbody", "", g_work.kinds.map(MinutesRow)));
    Find("minutes").hidden = Find("usual-minutes").hidden = g_work.kinds.length === 0;
}

function MinutesRow(kind) {
    const name = Make("th", "", LabelOfKind(kind.key));
    name.scope = "row";
    kind.input = Make("input", "minutes");
    kind.input.type = "number";
    kind.input.min = 0;
    kind.input.max = kMostMinutes;
    kind.input.setAttribute("aria-label", `Minutes for ${LabelOfKind(kind.key)}`);
    kind.input.addEventListener("input", () => ChangeMinutes(kind));
    kind.input.addEventListener("change", () => { ShowMinutes(); KeepMinutes(); });
    kind.printed = Make("span", "printed");
    kind.usual = Make("span", "usual");
    kind.time = Make("td", "time");
    return Make("tr", "", [name, Make("td", "", FormatNumber(kind.count)),
        Make("td", "", [kind.input, kind.printed, kind.usual]), kind.time]);
}

function IsMinutes(value) {
    return Number.isFinite(value) && value >= 0 && value <= kMostMinutes;
}

function ChangeMinutes({key, input}) {
    const isUsual = input.value === "" || !IsMinutes(input.valueAsNumber) ||
        input.valueAsNumber === UsualMinutes(key);
    if (isUsual) g_work.changed.delete(key);
    else g_work.changed.set(key, input.valueAsNumber);
    ShowWork();
}

function ShowMinutes() {
    for (const {key, input} of g_work.kinds) input.value = MinutesOf(key);
}

function ShowWork() {
    for (const {key, count, printed, usual, time} of g_work.kinds) {
        printed.textContent = String(MinutesOf(key));
        usual.textContent = g_work.changed.has(key) ? ` usual: ${UsualMinutes(key)}` : "";
        time.textContent = FormatMinutes(count * MinutesOf(key));
    }
    Find("usual-minutes").disabled = g_work.changed.size === 0;
    UpdatePageLinks();
    const sum = g_report.files.reduce((minutes, file) => minutes + MinutesOfFile(file), 0);
    Find("work-sum").textContent = `By the minutes below, what is left takes a person about ` +
        `${FormatMinutes(sum)}.`;
    ShowFolders();
}

// As a part of the address.
function MinutesText() {
    return [...g_work.changed].map(([key, minutes]) => `${key}.${minutes}`).join("*");
}

// The part of an address after its "#", with the minutes that are so now.
function WithMinutes(hash) {
    const address = new URLSearchParams(hash);
    if (g_work.changed.size) address.set("minutes", MinutesText());
    else address.delete("minutes");
    return address.toString();
}

// Nothing was opened or closed. An address that ended in "#" alone would lead to the top of the page.
function KeepMinutes() {
    const hash = WithMinutes(location.hash.slice(1));
    const page = location.href.split("#", 1)[0];
    history.replaceState(null, "", hash ? `${page}#${hash}` : page);
}

// An address that says nothing about minutes leaves them as they are. Those of kinds that do not occur
// here are kept: in another part they may.
function ReadMinutes(text) {
    if (text === null || text === MinutesText()) return;
    g_work.changed.clear();
    for (const [, key, value] of text.matchAll(/([^*]+?)\.(\d+(?:\.\d+)?)(?:\*|$)/g)) {
        const isKind = UsualMinutes(key) !== undefined;
        if (isKind && IsMinutes(Number(value))) g_work.changed.set(key, Number(value));
    }
    ShowMinutes();
    ShowWork();
}

function ResetMinutes() {
    g_work.changed.clear();
    ShowMinutes();
    ShowWork();
    KeepMinutes();
    Find("minutes").querySelector("input").focus();
}

// The parts of the folder that is open, by what is left to do; "" stands for its own files.
function FolderSums() {
    const sums = new Map();
    const start = g_work.folder.length;
    for (const file of g_report.files) {
        if (!file.path.startsWith(g_work.folder)) continue;
        const name = file.path.slice(start, file.path.indexOf("/", start) + 1);
        if (!sums.has(name)) sums.set(name, {name, files: 0, found: 0, left: 0, minutes: 0});
        const sum = sums.get(name);
        ++sum.files;
        sum.found += Count(file.found);
        sum.left += FailedIn(file) + Count(file.overlooked);
        sum.minutes += MinutesOfFile(file);
    }
    return [...sums.values()].sort((a, b) => b.minutes - a.minutes || b.left - a.left);
}

function AddUp(sums) {
    const all = {files: 0, found: 0, left: 0, minutes: 0};
    for (const sum of sums) for (const key of Object.keys(all)) all[key] += sum[key];
    return all;
}

function FolderRow(sum, label) {
    const name = Make("th", "", label);
    name.scope = "row";
    return Make("tr", "", [name, ...[sum.files, sum.found, sum.left].map((count) =>
        Make("td", "", FormatNumber(count))), Make("td", "time", FormatMinutes(sum.minutes))]);
}

function FolderLabel({name}) {
    if (!name) return "Files in no other folder";
    const button = MakeButton(Visible(name), () => OpenFolder(g_work.folder + name));
    button.className = "plain";
    return button;
}

function ShowFolders() {
    const sums = FolderSums();
    const rest = sums.splice(kFoldersAtOnce);
    const rows = sums.map((sum) => FolderRow(sum, FolderLabel(sum)));
    if (rest.length) {
        rows.push(FolderRow(AddUp(rest), `${FormatNumber(rest.length)} more with less to do`));
    }
    const caption = g_work.folder ? `Folders in ${Visible(g_work.folder)}` : "Folders";
    Find("folders").replaceChildren(Make("caption", "", caption),
        MakeHeadRow(["Folder", "Files", "Commands found", "Not converted", "Work"]),
        Make("tbody", "", rows),
        Make("tfoot", "", FolderRow(AddUp([...sums, ...rest]), "All of these")));
    Find("folder-up").hidden = g_work.folder === "";
}

// The list shows the files of this folder alone, too.
function OpenFolder(folder) {
    g_work.folder = folder;
    ShowFolders();
    UpdateFiles();
    Find("folders").focus();
}

function FolderAbove(folder) {
    return folder.slice(0, folder.lastIndexOf("/", folder.length - 2) + 1);
}

function StartWork() {
    Find("work").hidden = g_report.files.length === 0;
    CountRepeats();
    FillMinutes();
    ShowMinutes();
    ShowWork();
}

// ---- Sign-offs ----
//
// What readers have found out about single commands. It is kept in a file that a page can only hand
// over: whoever saves it puts it into the folder of the results. So every page holds all sign-offs,
// also those about commands that are not in its report, and a file that was saved can be read back.
// A command is known by its text, as the program knows it, and copies of one text by their lines, as
// long as there are as many of them.

const kSignOffName = "quillet-signoff.json";
const kSignOffFormat = "quillet-signoff";
const kSignOffVersion = 1;
const kSignOffStates = new Map([
    ["checked", {label: "Checked", tone: "good"}],
    ["mended", {label: "Mended by hand", tone: "copied"}],
]);
const kMostRemark = 10000;  // characters
const kFirstOthers = 10;
const g_signOffs = {
    all: new Map(),     // by their keys
    files: new Map(),   // by a file's key: how many it has
    others: [],         // those that were about no command when the report was made
    known: new Map(),   // those of the report, by their keys
    changed: new Set(),  // keys of those that were changed on this page, saved or not
    removed: new Map(),  // by their keys: which command it was that one was taken back from
    unsaved: false,
};

// FNV-1a in 64 bits, as two halves: a product of such numbers would not be exact.
function HashOf(text) {
    let high = 0xcbf29ce4;
    let low = 0x84222325;
    for (const byte of new TextEncoder().encode(text)) {
        low = (low ^ byte) >>> 0;
        const product = low * 0x1b3;
        high = (Math.imul(high, 0x1b3) + Math.floor(product / 0x100000000) + (low << 8)) >>> 0;
        low = product >>> 0;
    }
    return [high, low].map((half) => half.toString(16).padStart(8, "0")).join("");
}

// Where nothing is said about copies, there are no more than it takes.
function CopiesOf({number, copies}) {
    return copies ?? number;
}

// `place` is a sign-off or the entry of a command.
function SignOffKey(pathKey, hash, place) {
    return `${hash} ${place.number} ${CopiesOf(place)} ${pathKey}`;
}

function AddSignOff(pathKey, signOff) {
    const key = SignOffKey(pathKey, signOff.hash, signOff);
    if (!g_signOffs.all.has(key)) {
        g_signOffs.files.set(pathKey, (g_signOffs.files.get(pathKey) || 0) + 1);
    }
    g_signOffs.all.set(key, signOff);
    g_signOffs.removed.delete(key);
}

// Other parts of the report, and pages of others, still have it, so it is told that it is no more.
function RemoveSignOff(pathKey, place) {
    const key = SignOffKey(pathKey, place.hash, place);
    g_signOffs.removed.set(key, place);
    if (!g_signOffs.all.delete(key)) return;
    g_signOffs.files.set(pathKey, g_signOffs.files.get(pathKey) - 1);
}

function PathMembers(file) {
    return file.rawPath ? {path: file.path, rawPath: file.rawPath} : {path: file.path};
}

function ReadSignOffs() {
    // Of all parts of a report.
    for (const signOff of g_report.allSignOffs || []) AddSignOff(KeyOf(signOff), signOff);
    for (const file of g_report.files) {
        for (const signOff of file.signOffs || []) {
            AddSignOff(KeyOf(file), {...PathMembers(file), ...signOff});
        }
    }
    g_signOffs.others = g_report.otherSignOffs || [];
    for (const signOff of g_signOffs.others) AddSignOff(KeyOf(signOff), signOff);
    g_signOffs.known = new Map(g_signOffs.all);
}

// What was overlooked is cut out from its word on; the same command, once it is met, brings along the
// blanks around it, and the sign that begins it in batch layout.
function BareText(text) {
    const kBlanks = " \t\n\v\f\r";
    const skipBlanks = (from) => {
        let place = from;
        while (place < text.length && kBlanks.includes(text[place])) ++place;
        return place;
    };
    let begin = skipBlanks(0);
    if (text[begin] === "+" || text[begin] === "-") begin = skipBlanks(begin + 1);
    let end = text.length;
    while (end > begin && kBlanks.includes(text[end - 1])) --end;
    return text.slice(begin, end);
}

// The commands of a file that can be signed off, each once: one in the body of a macro counts as
// overlooked, whatever was made of it.
function EntriesOf(file, commands, findings) {
    const overlooked = findings.filter((finding) => finding.kind === "overlooked");
    const inMacros = new Set(overlooked.filter((finding) => finding.code === "macro-body")
        .map((finding) => finding.firstLine));
    const all = [...commands.filter((command) => !inMacros.has(command.firstLine)), ...overlooked];
    all.sort((a, b) => Count(a.firstLine) - Count(b.firstLine));
    const counts = new Map();
    const entries = new Map(all.map((one) => {
        const text = BareText(String(one.source ?? one.text ?? ""));
        const number = (counts.get(text) || 0) + 1;
        counts.set(text, number);
        return [one, {file, text, number, hash: "", firstLine: Count(one.firstLine), badge: null,
                      show: null}];
    }));
    for (const entry of entries.values()) entry.copies = counts.get(entry.text);
    return entries;
}

// Nothing is hashed before somebody asks for it.
function EntryHash(entry) {
    if (!entry.hash) entry.hash = HashOf(entry.text);
    return entry.hash;
}

function SignOffOf(entry) {
    const pathKey = KeyOf(entry.file);
    if (!g_signOffs.files.get(pathKey)) return null;
    return g_signOffs.all.get(SignOffKey(pathKey, EntryHash(entry), entry)) || null;
}

function StateOf(one) {
    const entry = g_open.signable.get(one);
    const signOff = entry ? SignOffOf(entry) : null;
    return signOff ? signOff.state : "";
}

// Shows in a list what was said about a command.
function SignOffBadge(one) {
    const badge = Make("span", "signed");
    const entry = g_open.signable.get(one);
    if (entry) {
        entry.badge = badge;
        ShowBadge(entry);
    }
    return badge;
}

function ShowBadge(entry) {
    if (!entry.badge) return;
    const state = kSignOffStates.get((SignOffOf(entry) || {}).state);
    entry.badge.textContent = state ? state.label : "";
    entry.badge.className = state ? `signed tone-${state.tone}` : "signed";
}

// Where a command is signed off; nothing for one that cannot be.
function SignOffPart(one) {
    const entry = g_open.signable.get(one);
    if (!entry) return [];
    const state = Make("select");
    AddOption(state, "", "Not yet");
    for (const [name, {label}] of kSignOffStates) AddOption(state, name, label);
    const remark = Make("input");
    remark.type = "text";
    remark.maxLength = kMostRemark;
    const printed = Make("p", "printed");
    const follow = () => {
        remark.disabled = !state.value;
        printed.textContent = SignOffText(state.value, remark.value);
    };
    const change = () => {
        follow();
        ChangeSignOff(entry, state.value, remark.value);
    };
    entry.show = () => {
        const {state: name, remark: text} = SignOffOf(entry) || {};
        state.value = name || "";
        remark.value = text || "";
        follow();
    };
    entry.show();
    state.addEventListener("input", change);
    remark.addEventListener("input", change);
    const remarkLabel = Make("label", "grow", ["Remark", remark]);
    const controls = Make("div", "controls sign-off", [
        Make("label", "", ["Sign-off", state]), remarkLabel]);
    controls.setAttribute("role", "group");
    controls.setAttribute("aria-label", "Sign-off");
    return [controls, printed];
}

function SignOffText(name, remark) {
    const state = kSignOffStates.get(name);
    if (!state) return "";
    return remark ? `${state.label}: ${Visible(remark)}` : state.label;
}

function ChangeSignOff(entry, state, remark) {
    const pathKey = KeyOf(entry.file);
    const {number, copies, firstLine} = entry;
    const place = {...PathMembers(entry.file), hash: EntryHash(entry), number, copies};
    g_signOffs.changed.add(SignOffKey(pathKey, place.hash, place));
    if (state) AddSignOff(pathKey, {...place, state, remark: WellFormed(remark), firstLine});
    else RemoveSignOff(pathKey, place);
    g_signOffs.unsaved = true;
    ShowBadge(entry);
    ShowSignOffCount();
}

function ShowSignOffCount() {
    const counts = CountBy([...g_signOffs.all.values()].map((signOff) => signOff.state));
    const told = [...kSignOffStates].filter(([name]) => counts.has(name)).map(([name, {label}]) =>
        `${Plural(counts.get(name), "command", "commands")} ${label.toLowerCase()}`);
    const sum = told.length ? `${told.join(", ")}.` : "No command is signed off.";
    Find("signed-count").textContent =
        g_signOffs.unsaved ? `${sum} Not everything is saved yet.` : sum;
    Find("save-signed").disabled = g_signOffs.all.size === 0 && !g_signOffs.unsaved;
}

function ShowOtherSignOffs() {
    const count = g_signOffs.others.length;
    const table = Find("signed-others");
    table.hidden = count === 0;
    Find("more-signed").hidden = true;
    if (count === 0) return;
    const verb = Plural(count, "sign-off is about a command", "sign-offs are about commands");
    table.replaceChildren(Make("caption", "", `${verb} not in this report: the text was changed, ` +
        "removed or copied, or the file was not looked at. They stay in the file."),
        MakeHeadRow(["File", "Line", "Sign-off", "Remark"]), Make("tbody"));
    ShowMoreOthers();
}

function ShowMoreOthers() {
    const {others} = g_signOffs;
    AddRows(Find("signed-others"), Find("more-signed"), others, kFirstOthers, (signOff) => {
        const name = Make("th", "", Visible(String(signOff.path)));
        name.scope = "row";
        const state = kSignOffStates.get(signOff.state) || {label: ""};
        const line = Count(signOff.firstLine);
        return Make("tr", "", [name, Make("td", "", line ? FormatNumber(line) : ""),
            Make("td", "", state.label), Make("td", "", Visible(String(signOff.remark || "")))]);
    });
}

// One on each line, in an order that lets two files be compared.
function SignOffFileText() {
    const order = (a, b) => (a < b ? -1 : Number(a > b));
    const list = (signOffs) => [...signOffs.values()].sort((a, b) => order(a.path, b.path) ||
        Count(a.firstLine) - Count(b.firstLine) || order(a.hash, b.hash) || a.number - b.number ||
        CopiesOf(a) - CopiesOf(b)).map((one) => JSON.stringify(one)).join(",\n");
    const head = JSON.stringify({format: kSignOffFormat, formatVersion: kSignOffVersion});
    const removed = g_signOffs.removed.size
        ? `,"removed":[\n${list(g_signOffs.removed)}\n]` : "";
    return `${head.slice(0, -1)},"signOffs":[\n${list(g_signOffs.all)}\n]${removed}}\n`;
}

function SaveSignOffs() {
    const file = new Blob([SignOffFileText()], {type: "application/json"});
    const link = Make("a");
    link.href = URL.createObjectURL(file);
    link.download = kSignOffName;
    link.click();
    // The browser takes the file when it likes to.
    const kLongEnough = 60000;
    setTimeout(() => URL.revokeObjectURL(link.href), kLongEnough);
    g_signOffs.unsaved = false;
    ShowSignOffCount();
}

// What the program takes, and no more: it ends a run rather than lose anything of such a file.
const kMostSignOffBytes = 67108864;
const kMostTextBytes = 1048576;
const kMostPathBytes = 262144;
const kHalfCharacter = /\p{Surrogate}/u;  // that has lost its other half, so is no text

function WellFormed(text) {
    return text.replace(new RegExp(kHalfCharacter, "gu"), "\ufffd");
}

function IsText(value, mostBytes) {
    return typeof value === "string" && value.length <= mostBytes && !kHalfCharacter.test(value) &&
        new TextEncoder().encode(value).length <= mostBytes;
}

function IsWithin(value, least) {
    return Number.isSafeInteger(value) && value >= least;
}

function IsPath(value) {
    return IsText(value, kMostPathBytes) &&
        !value.split("/").some((part) => ["", ".", ".."].includes(part));
}

// The bytes of an exact name, a character each.
function BytesOfRaw(raw) {
    return raw.replace(/%(..)/g, (code, digits) => String.fromCharCode(parseInt(digits, 16)));
}

function IsRawPath(value) {
    const isEncoded = typeof value === "string" && value.length <= 3 * kMostPathBytes &&
        /^(?:[A-Za-z0-9._~/-]|%[0-9A-F]{2})*$/.test(value);
    if (!isEncoded) return false;
    const bytes = BytesOfRaw(value);
    // Whether it is too long is asked of the bytes, each of which IsPath would take for two.
    return bytes.length <= kMostPathBytes && IsPath(bytes.replace(/[^/.]/g, "x"));
}

// Which command a sign-off is about.
function IsPlace(value) {
    return typeof value === "object" && value !== null && IsPath(value.path) &&
        (value.rawPath === undefined || IsRawPath(value.rawPath)) &&
        /^[0-9a-f]{16}$/.test(value.hash) && IsWithin(value.number, 1) &&
        (value.copies === undefined || IsWithin(value.copies, value.number));
}

function IsSignOff(value) {
    return IsPlace(value) && kSignOffStates.has(value.state) &&
        (value.remark === undefined || IsText(value.remark, kMostTextBytes)) &&
        (value.firstLine === undefined || IsWithin(value.firstLine, 0));
}

// Reports write an exact name in one way, and only where the path is not enough.
function WithOwnPath(place) {
    if (place.rawPath === undefined) return place;
    const rawPath = BytesOfRaw(place.rawPath).replace(/[^A-Za-z0-9._~/-]/g, (byte) =>
        "%" + byte.charCodeAt(0).toString(16).toUpperCase().padStart(2, "0"));
    try {
        return {...place, path: decodeURIComponent(rawPath), rawPath: undefined};
    } catch {
        return {...place, rawPath};
    }
}

function KeyOfPlace(place) {
    return SignOffKey(KeyOf(place), place.hash, place);
}

// By their keys; fewer than there are in the list when two are about the same command.
function ByKeys(list) {
    return new Map(list.map(WithOwnPath).map((place) => [KeyOfPlace(place), place]));
}

// What is wrong with a file that was to be added; empty when nothing is.
function ProblemOfSignOffs(file) {
    if (typeof file !== "object" || file === null || file.format !== kSignOffFormat) {
        return "it holds no sign-offs";
    }
    if (file.formatVersion !== kSignOffVersion) return "a later version has written it";
    if (!Array.isArray(file.signOffs)) return "it holds no list of sign-offs";
    const wrong = file.signOffs.findIndex((signOff) => !IsSignOff(signOff));
    if (wrong >= 0) return `signOffs[${wrong}] is damaged`;
    if (ByKeys(file.signOffs).size < file.signOffs.length) {
        return "two of its sign-offs are about the same command";
    }
    const isRemovedGood = Array.isArray(file.removed ?? []) && (file.removed ?? []).every(IsPlace);
    return isRemovedGood ? "" : "its list of those that were taken back is damaged";
}

function ParseSignOffs(text) {
    try {
        return JSON.parse(text);
    } catch {
        return null;
    }
}

// They say the same of one command. Either may be missing.
function SayTheSame(one, other) {
    return Boolean(one) === Boolean(other) &&
        (!one || (one.state === other.state && (one.remark || "") === (other.remark || "")));
}

// What a file says counts for more than what the report knew, but for less than what was done on this
// page, as does what another file has changed since the report. Tells how many it has that differ
// from what was done here.
function TakeSignOffs(signOffs, removed) {
    let differing = 0;
    for (const [key, signOff] of signOffs) {
        if (SayTheSame(signOff, g_signOffs.known.get(key))) continue;
        if (!g_signOffs.changed.has(key)) AddSignOff(KeyOf(signOff), signOff);
        else differing += Number(!SayTheSame(signOff, g_signOffs.all.get(key)));
    }
    for (const [key, place] of removed) {
        if (!g_signOffs.changed.has(key)) RemoveSignOff(KeyOf(place), place);
        else differing += Number(g_signOffs.all.has(key));
    }
    return differing;
}

// Would somebody who has the file lose anything with this page?
function HoldsMoreThan(signOffs, removed) {
    return g_signOffs.all.size !== signOffs.size ||
        [...g_signOffs.all].some(([key, one]) => !SayTheSame(one, signOffs.get(key))) ||
        [...g_signOffs.removed.keys()].some((key) => !removed.has(key));
}

function TellOfAdding(text) {
    Find("signed-problem").hidden = !text;
    Find("signed-problem").textContent = text;
}

async function AddSignOffsOf(input) {
    const [chosen] = input.files;
    if (!chosen) return;
    const isTooLong = chosen.size > kMostSignOffBytes;
    const file = isTooLong ? null : ParseSignOffs(await chosen.text());
    input.value = "";
    const problem = isTooLong ? `it is longer than ${FormatNumber(kMostSignOffBytes)} bytes`
                              : ProblemOfSignOffs(file);
    if (problem) {
        TellOfAdding(`${Visible(chosen.name)} was not added: ${problem}.`);
        return;
    }
    const signOffs = ByKeys(file.signOffs);
    const removed = ByKeys(file.removed ?? []);
    const differing = TakeSignOffs(signOffs, removed);
    g_signOffs.unsaved = HoldsMoreThan(signOffs, removed);
    TellOfAdding(differing === 0 ? ""
        : `${Visible(chosen.name)} says something else of ` +
          `${Plural(differing, "command", "commands")} than was said on this page, which stays.`);
    ShowSignOffCount();
    ShowSignOffsAgain();
}

// Shows what is known now in what is drawn already; nothing is opened, closed or moved.
function ShowSignOffsAgain() {
    for (const entry of g_open.signable.values()) {
        ShowBadge(entry);
        if (entry.show) entry.show();
    }
    if (g_open.file) FillCommandFilter(Find("command-filter").value);
}

function OnLeave(event) {
    if (!g_signOffs.unsaved) return;
    event.preventDefault();
    event.returnValue = "";  // Older browsers ask only then.
}

function StartSignOffs() {
    ReadSignOffs();
    Find("signed").hidden = g_report.files.length === 0 && g_signOffs.all.size === 0;
    ShowSignOffCount();
    ShowOtherSignOffs();
}

// ---- The list of files ----

function AddOption(select, value, text) {
    const option = Make("option", "", text);
    option.value = value;
    select.append(option);
}

// What became of a file's result, beside the outcome of its conversion.
const kResultFilters = new Map([
    ["kept", {filter: "Kept from an earlier run", holds: (file) => Boolean(file.kept)}],
    ["edited", {filter: "Edited results", holds: (file) => file.result === "edited"}],
    ["sourceChanged", {filter: "Edited, source has changed", holds: (file) => file.sourceChanged}],
    ["orphaned", {filter: "Without a source", holds: (file) => file.result === "orphaned"}],
    ["mended", {filter: "Mended since the last run", holds: kChanges.get("mended").holds}],
    ["new", {filter: "Failing since the last run", holds: kChanges.get("new").holds}],
    ["stillFailing", {filter: "Failing as in the last run",
                      holds: (file) => Boolean(g_report.sinceLastRun) && StillFailing(file) > 0}],
    ["gone", {filter: "Failing commands are gone", holds: kChanges.get("gone").holds}],
    ["signed", {filter: "With sign-offs", holds: (file) => g_signOffs.files.get(KeyOf(file)) > 0}],
]);

function FillFilters(outcomes, codes, reasons) {
    const outcome = Find("outcome");
    AddOption(outcome, "", "All outcomes");
    for (const name of OutcomesIn(outcomes)) {
        AddOption(outcome, name, `${Outcome(kFileOutcomes, name).label} ` +
            `(${FormatNumber(outcomes.get(name))})`);
    }
    for (const [name, {filter, holds}] of kResultFilters) {
        const count = g_report.files.filter(holds).length;
        if (count) AddOption(outcome, name, `${filter} (${FormatNumber(count)})`);
    }
    FillCountedFilter(Find("finding"), "All findings", codes, LabelOfCode);
    FillCountedFilter(Find("reason"), "All reasons", reasons, LabelOfReason);
}

// Most frequent first.
function FillCountedFilter(select, all, counts, label) {
    AddOption(select, "", all);
    for (const [name, count] of [...counts].sort((a, b) => b[1] - a[1])) {
        AddOption(select, name, `${label(name)} (${FormatNumber(count)})`);
    }
    select.disabled = counts.size === 0;
}

function MakeHeadings() {
    for (const column of kColumns) {
        const button = Make("button", "", column.label);
        button.type = "button";
        button.addEventListener("click", () => SortBy(column));
        const style = `${column.numeric ? "number" : ""} ${column.style || ""}`;
        const heading = Make("div", style, button);
        heading.setAttribute("role", "columnheader");
        heading.dataset.column = column.key;
        Find("headings").append(heading);
    }
}

function SortBy(column) {
    const again = column === g_list.column;
    g_list.descending = again ? !g_list.descending : column.numeric;
    g_list.column = column;
    UpdateFiles();
}

function ShowSorting() {
    for (const heading of Find("headings").children) {
        const sorted = heading.dataset.column === g_list.column.key;
        const order = g_list.descending ? "descending" : "ascending";
        heading.setAttribute("aria-sort", sorted ? order : "none");
    }
}

function Matches(file, {text, outcome, finding, reason, macro}) {
    if (g_groups.files && !g_groups.files.has(file.index)) return false;
    if (!file.path.startsWith(g_work.folder)) return false;
    const filter = kResultFilters.get(outcome);
    if (filter ? !filter.holds(file) : outcome && file.outcome !== outcome) return false;
    if (finding && !NamesIn(file.codes).includes(finding)) return false;
    if (reason && !NamesIn(file.errors).includes(reason)) return false;
    if (macro && !CallsOf(file).some(([name]) => KeyOfMacro(name) === macro)) return false;
    return !text || file.path.toLowerCase().includes(text) ||
        (file.message || "").toLowerCase().includes(text) ||
        (text === g_search.text && g_search.found.has(file.index));
}

function InOrder(files) {
    const {column, descending} = g_list;
    const direction = descending ? -1 : 1;
    return files.sort((a, b) => direction * (column.rank(a) - column.rank(b)) ||
        a.index - b.index);
}

// Finds the files that match, and shows them from the first.
function UpdateFiles() {
    const wanted = {
        text: Find("search").value.trim().toLowerCase(), outcome: Find("outcome").value,
        finding: Find("finding").value, reason: Find("reason").value,
        macro: Find("macro").value,
    };
    SearchTexts(wanted.text);
    const all = g_report.files;
    g_list.shown = InOrder(all.filter((file) => Matches(file, wanted)));
    g_list.active = 0;
    const count = g_list.shown.length;
    Find("count").textContent = count === all.length
        ? Plural(count, "file", "files")
        : `${FormatNumber(count)} of ${Plural(all.length, "file", "files")}`;
    const isPart = g_groups.files !== null || g_work.folder !== "";
    Find("clear").disabled = !isPart && !Object.values(wanted).some(Boolean);
    ShowSorting();
    Find("grid").setAttribute("aria-rowcount", count + 1);
    Find("grid").scrollTop = 0;
    DrawRows();
    ShowNeighbors();
}

function FilterFiles(which, value) {
    ClearFilters();
    Find(which).value = value;
    UpdateFiles();
    Find("files").scrollIntoView();
    Find("grid").focus({preventScroll: true});
}

const kFilterIds = ["search", "outcome", "finding", "reason", "macro"];

function ClearFilters() {
    for (const id of kFilterIds) Find(id).value = "";
    g_groups.files = null;
    if (g_work.folder) {
        g_work.folder = "";
        ShowFolders();
    }
    UpdateFiles();
}

// Where there is no room for all of it, a path keeps the end of its name, by which files of one
// series are told apart.
function PathParts(path) {
    const cut = path.lastIndexOf("/") + 1;
    const name = [...Visible(path.slice(cut))];
    const start = name.slice(0, -kNameEnd).join("");
    return [Make("span", "folder", Visible(path.slice(0, cut))),
        Make("span", "name", [Make("span", "start", start),
            Make("span", "end", name.slice(-kNameEnd).join(""))])];
}

function Cell(className, content) {
    const cell = Make("div", className, content);
    cell.setAttribute("role", "gridcell");
    return cell;
}

function FileRow(index) {
    const file = g_list.shown[index];
    const path = Cell("path", PathParts(file.path));
    path.title = Visible(file.path);
    if (file.message) path.append(Make("span", "said", Visible(file.message)));
    const row = Make("div", "file-row", [
        path,
        Cell("", OutcomeBadge(kFileOutcomes, file.outcome)),
        Cell("number spare", FormatNumber(file.converted)),
        Cell("number rare", FormatNumber(file.overlooked)),
        Cell("number rare", FormatNumber(FailedIn(file))),
        Cell("number spare", FormatNumber(file.warnings)),
        Cell("number spare", FormatBytes(file.bytes)),
    ]);
    row.setAttribute("role", "row");
    row.setAttribute("aria-rowindex", index + 2);
    row.setAttribute("aria-selected", file === g_open.file);
    row.id = `row-${index}`;
    row.dataset.index = index;
    row.style.top = `${index * kRowHeight}px`;
    row.classList.toggle("active", index === g_list.active);
    return row;
}

// The indices of the rows that have to be drawn: those in sight, and the active one, which has to
// exist for screen readers wherever it is.
function RowsInSight() {
    const count = g_list.shown.length;
    if (g_list.printing) return [...Array(Math.min(count, kPrintedRows)).keys()];
    const grid = Find("grid");
    const first = Math.max(0, Math.floor(grid.scrollTop / kRowHeight) - kSpareRows);
    const inSight = Math.ceil(grid.clientHeight / kRowHeight) + 2 * kSpareRows;
    const last = Math.min(count, first + inSight);
    const indices = [];
    if (g_list.active < first) indices.push(g_list.active);
    for (let index = first; index < last; ++index) indices.push(index);
    if (g_list.active >= last && g_list.active < count) indices.push(g_list.active);
    return indices;
}

function DrawRows() {
    const rows = Find("rows");
    const count = g_list.shown.length;
    // The height first: what is in sight depends on it.
    rows.style.height = count ? `${count * kRowHeight}px` : "auto";
    rows.replaceChildren(...RowsInSight().map(FileRow));
    if (count === 0) rows.append(NoFileRow());
    const grid = Find("grid");
    if (count) grid.setAttribute("aria-activedescendant", `row-${g_list.active}`);
    else grid.removeAttribute("aria-activedescendant");
    const left = count - kPrintedRows;
    Find("printed-count").textContent = left > 0
        ? `${FormatNumber(left)} more files are not printed; choose fewer to see them on paper.`
        : "";
}

function NoFileRow() {
    const empty = g_report.files.length === 0;
    const row = Make("div", "nothing",
        Cell("", empty ? "There are no files in this report." : "No file matches."));
    row.setAttribute("role", "row");
    return row;
}

function MoveTo(index) {
    const grid = Find("grid");
    g_list.active = Math.max(0, Math.min(g_list.shown.length - 1, index));
    const top = g_list.active * kRowHeight;
    const room = grid.clientHeight - 2 * kRowHeight;  // without the headings
    if (top < grid.scrollTop) grid.scrollTop = top;
    if (top > grid.scrollTop + room) grid.scrollTop = top - room;
    DrawRows();
}

function OnGridKey(event) {
    if (event.target !== Find("grid") || event.altKey || event.ctrlKey || event.metaKey) return;
    const page = Math.max(1, Math.floor(Find("grid").clientHeight / kRowHeight) - 2);
    const steps = {ArrowDown: 1, ArrowUp: -1, PageDown: page, PageUp: -page};
    if (event.key in steps) MoveTo(g_list.active + steps[event.key]);
    else if (event.key === "Home") MoveTo(0);
    else if (event.key === "End") MoveTo(g_list.shown.length - 1);
    else if (event.key === "Enter" || event.key === " ") Choose(g_list.shown[g_list.active]);
    else return;
    event.preventDefault();
}

function OnRowClick(event) {
    const row = event.target.closest("[data-index]");
    if (!row) return;
    g_list.active = Number(row.dataset.index);
    Choose(g_list.shown[g_list.active]);
}

// Draws once per picture, however often the list is scrolled in between.
function OnScroll() {
    if (OnScroll.waiting) return;
    OnScroll.waiting = true;
    requestAnimationFrame(() => {
        OnScroll.waiting = false;
        DrawRows();
    });
}

// ---- The search in texts ----
//
// What commands and findings say is not read before somebody searches for it. Then the files are
// looked through in short steps, so that whoever goes on typing need not wait. The text of an
// element tells whether the words may be in it; only where they are it is read.

const kShortestSearch = 3;  // characters; shorter ones are in nearly every text
const kSearchStep = 30;     // milliseconds
const g_search = {
    text: "",
    next: 0,            // index of the file to be looked at next
    found: new Set(),   // indices of files
    timer: 0,
};

function EscapePattern(text) {
    return text.replace(/[.*+?^${}()|[\]\\/]/g, "\\$&");
}

// Finds `text` as it stands in an element.
function PatternOf(text) {
    const written = JSON.stringify(text).slice(1, -1).replaceAll("<", "\\u003c");
    return new RegExp(EscapePattern(written), "iu");
}

function Holds(texts, wanted) {
    return texts.some((text) => typeof text === "string" && text.toLowerCase().includes(wanted));
}

function CommandHolds(command, wanted) {
    return Holds([command.source, command.generated, command.message, command.hint,
        ...WarningsOf(command)], wanted);
}

function FindingHolds(finding, wanted) {
    return Holds([finding.sentence, finding.text, finding.macro], wanted);
}

function MacroHolds(macro, wanted) {
    return Holds([macro.name], wanted) || macro.calls.some((call) =>
        Holds([call.text, call.reason], wanted) ||
        (call.commands || []).some((command) => CommandHolds(command, wanted)));
}

function TextsHold(file, wanted, pattern) {
    const chunk = Number.isInteger(file.chunk) ? Find(`chunk-${file.chunk}`) : null;
    if (!chunk || !pattern.test(chunk.textContent)) return false;
    const {commands, findings, macros} = ReadDetails(file);
    return (commands || []).some((command) => CommandHolds(command, wanted)) ||
        (findings || []).some((finding) => FindingHolds(finding, wanted)) ||
        (macros || []).some((macro) => MacroHolds(macro, wanted));
}

// Begins anew when something else is searched for.
function SearchTexts(text) {
    const wanted = [...text].length >= kShortestSearch ? text : "";
    if (wanted === g_search.text) return;
    clearTimeout(g_search.timer);
    g_search.text = wanted;
    g_search.next = 0;
    g_search.found = new Set();
    if (IsIndex()) return;
    Find("searching").textContent = wanted ? "Searching in commands\u2026" : "";
    if (wanted) g_search.timer = setTimeout(SearchStep, kSearchStep);
}

function SearchStep() {
    const pattern = PatternOf(g_search.text);
    const before = g_search.found.size;
    const end = performance.now() + kSearchStep;
    const files = g_report.files;
    do {
        const file = files[g_search.next++];
        if (file && TextsHold(file, g_search.text, pattern)) g_search.found.add(file.index);
    } while (g_search.next < files.length && performance.now() < end);
    if (g_search.found.size > before) ShowFound();
    if (g_search.next < files.length) g_search.timer = setTimeout(SearchStep);
    else Find("searching").textContent = "";
}

// The list grows; whoever is in it stays where they are.
function ShowFound() {
    const active = g_list.shown[g_list.active];
    const top = Find("grid").scrollTop;
    UpdateFiles();
    g_list.active = Math.max(0, g_list.shown.indexOf(active));
    Find("grid").scrollTop = top;
    DrawRows();
}

// ---- The address ----

// Names that are no UTF-8 may look alike; their bytes do not.
function KeyOf(file) {
    return file.rawPath ? `raw:${file.rawPath}` : `file:${file.path}`;
}

function Go(file, command) {
    const address = new URLSearchParams();
    if (file) address.set(file.rawPath ? "raw" : "file", file.rawPath || file.path);
    if (file && command !== null) address.set("command", command + 1);
    if (g_work.changed.size) address.set("minutes", MinutesText());
    if (file && IsIndex()) {
        location.assign(AddressInPart(file, address));
        return;
    }
    location.hash = address.toString();
    // The browser tells of the change later; whoever pressed a key expects it now.
    FollowAddress();
}

function AddressInPart(file, address) {
    return `${encodeURIComponent(PartOf(file).name)}#${address}`;
}

function Choose(file) {
    if (!file) return;
    if (file === g_open.file) Find("file-title").focus();
    else Go(file, null);
}

function FollowAddress() {
    const address = new URLSearchParams(location.hash.slice(1));
    const wanted = address.get("file") ?? address.get("raw");
    const kind = address.has("file") ? "file" : "raw";
    const file = wanted === null ? null : g_fileOfKey.get(`${kind}:${wanted}`) || null;
    ReadMinutes(address.get("minutes"));
    ShowMissing(wanted !== null && !file ? `This report has no file ${Visible(wanted)}.` : "");
    if (file && IsIndex()) {
        location.replace(AddressInPart(file, address));
        return;
    }
    if (file !== g_open.file) ShowFile(file);
    const number = Number(address.get("command"));
    ShowCommand(file && g_open.commands[number - 1] ? number - 1 : null);
}

function ShowMissing(text) {
    let notice = Find("missing");
    if (!notice) {
        if (!text) return;
        notice = Make("p", "notice");
        notice.id = "missing";
        notice.setAttribute("role", "alert");
        Find("notices").append(notice);
    }
    notice.textContent = text;
    notice.hidden = !text;
}

// ---- One file ----

function ReadDetails(file) {
    const chunk = file && Number.isInteger(file.chunk) ? Find(`chunk-${file.chunk}`) : null;
    return chunk ? JSON.parse(chunk.textContent) : {findings: [], commands: []};
}

function ShowFile(file) {
    g_open.file = file;
    const details = ReadDetails(file);
    g_open.findings = details.findings || [];
    g_open.commands = details.commands || [];
    g_open.macros = details.macros || [];
    g_open.signable = file ? EntriesOf(file, g_open.commands, g_open.findings) : new Map();
    for (const change of Object.keys(g_open.changed)) {
        g_open.changed[change] = new Set(file ? LinesChanged(file, change) : []);
    }
    g_open.command = null;
    Find("file").hidden = !file;
    document.body.classList.toggle("reading", Boolean(file));
    MarkChosenRow();
    if (!file) {
        Find("findings").replaceChildren();
        Find("file-macro-list").replaceChildren();
        Find("commands").replaceChildren();
        Find("grid").focus();
        return;
    }
    Find("file-title").textContent = Visible(file.path);
    ShowFileFacts(file);
    FillFindingFilter();
    ListFindings();
    FillMacroFilter();
    ListMacros();
    // What was searched for in all files is what is wanted of this one.
    const isFound = g_search.text !== "" && g_open.commands.some((command) =>
        CommandHolds(command, g_search.text));
    FillCommandFilter(isFound ? "search" : "");
    ShowNeighbors();
    ListCommands();
    Find("file").scrollIntoView();
    Find("file-title").focus({preventScroll: true});
}

// A file that was opened by its address becomes the active row, so that the list goes on there.
function MarkChosenRow() {
    const index = g_list.shown.indexOf(g_open.file);
    if (index >= 0 && index !== g_list.active) MoveTo(index);
    else DrawRows();
}

function ResultText(file) {
    if (file.result === "edited") {
        return file.sourceChanged ? "edited, source has changed" : "edited";
    }
    if (file.result === "orphaned") return "without a source";
    return file.kept ? "kept from an earlier run" : "";
}

function WithReason(text, reason) {
    const why = kReadingReasons.get(reason) ?? Visible(String(reason || ""));
    return why ? `${text} (${why})` : text;
}

function ShowFileFacts(file) {
    const facts = Find("file-facts");
    facts.replaceChildren();
    ShowLinks(facts, file);
    AddFact(facts, "Outcome", OutcomeBadge(kFileOutcomes, file.outcome));
    AddFact(facts, "Result", ResultText(file));
    AddFact(facts, "Name in bytes", file.rawPath ? Visible(file.rawPath) : "");
    AddFact(facts, "Size", FormatBytes(file.bytes));
    if (file.encoding) {
        AddFact(facts, "Lines", FormatNumber(file.lines));
        AddFact(facts, "Encoding", WithReason(
            kEncodings.get(file.encoding) || Visible(file.encoding), file.encodingReason));
        AddFact(facts, "Layout", WithReason(Visible(file.layout || ""), file.layoutReason));
        AddFact(facts, "Blank lines", WithReason(
            kBlankLines.get(file.blankLines) || "", file.blankLinesReason));
        AddFact(facts, "Found", FormatNumber(file.found));
        AddFact(facts, "Copied", FormatNumber(file.copied));
        AddFact(facts, "Converted", FormatNumber(file.converted));
        AddFact(facts, "Failed", FormatNumber(file.failed));
        AddFact(facts, "Unreadable", file.unreadable ? FormatNumber(file.unreadable) : "");
        AddFact(facts, "Overlooked", FormatNumber(file.overlooked));
        AddFact(facts, "Warnings", FormatNumber(file.warnings));
    }
    const gone = LinesChanged(file, "gone").map(FormatNumber);
    AddFact(facts, "Gone since the last run", gone.length
        ? `${Plural(gone.length, "command", "commands")} not converted then, from ` +
          `${gone.length === 1 ? "line" : "lines"} ${gone.join(", ")}` : "");
    AddFact(facts, "Reasons for failure", NamesIn(file.errors).map(LabelOfReason).join("; "));
    if (file.modified) AddFact(facts, "Last change", FormatTime(new Date(file.modified * 1000)));
    const message = Find("file-message");
    message.hidden = !file.message;
    message.textContent = Visible(file.message || "");
}

function ShowNeighbors() {
    const index = g_list.shown.indexOf(g_open.file);
    Find("previous-file").disabled = index <= 0;
    Find("next-file").disabled = index < 0 || index + 1 >= g_list.shown.length;
}

function GoToNeighbor(step) {
    Choose(g_list.shown[g_list.shown.indexOf(g_open.file) + step]);
}

// The address of a file within a folder. Bytes that are no UTF-8 have their codes already.
function AddressOf(file) {
    const parts = (file.rawPath || file.path).split("/").map(encodeURIComponent);
    const address = parts.join("/");
    return file.rawPath ? address.replace(/%25([0-9A-F]{2})/g, "%$1") : address;
}

// Nothing where the source cannot be told from here: reports that were joined name several folders.
function SourceAddress(file) {
    const named = String(g_report.source || "");
    const hasDrive = /^[A-Za-z]:[\\/]/.test(named);
    const source = hasDrive ? `/${named.replaceAll("\\", "/")}` : named;
    const known = source.startsWith("/") && !source.includes(", /") &&
        !source.includes("\ufffd") && file.result !== "orphaned";
    if (!known) return "";
    const address = source.split("/").map(encodeURIComponent).join("/");
    const folder = "file://" + (hasDrive ? address.replace("%3A", ":") : address);
    // A run on a single file names that.
    const isFile = g_report.files.length === 1 && source.endsWith(`/${file.path}`);
    return isFile ? folder : `${folder.replace(/\/$/, "")}/${AddressOf(file)}`;
}

// The page lies in the folder of the results.
function ResultAddress(file) {
    return file.result && !g_report.dryRun ? AddressOf(file) : "";
}

function ShowLinks(facts, file) {
    const links = [["Source", SourceAddress(file)], ["Result", ResultAddress(file)]]
        .filter(([, address]) => address).map(([text, address]) => {
            const link = Make("a", "", text);
            link.href = address;
            link.target = "_blank";
            link.rel = "noopener";
            return link;
        });
    if (links.length) AddFact(facts, "Open", links.flatMap((link) => [link, " "]).slice(0, -1));
}

// ---- The findings of a file ----

function FillFindingFilter() {
    const select = Find("finding-filter");
    select.replaceChildren();
    AddOption(select, "", `All findings (${FormatNumber(g_open.findings.length)})`);
    for (const [code, count] of CountBy(g_open.findings.map((finding) => String(finding.code)))) {
        AddOption(select, code, `${LabelOfCode(code)} (${FormatNumber(count)})`);
    }
    // What was asked of all files is asked of this one.
    const wanted = Find("finding").value;
    if (g_open.findings.some((finding) => finding.code === wanted)) select.value = wanted;
}

// Shows the first findings that the filter lets through; what no conversion has seen comes first.
function ListFindings() {
    const wanted = Find("finding-filter").value;
    const kinds = [...kFindingKinds.keys()];
    const listed = g_open.findings.filter((finding) => !wanted || finding.code === wanted)
        .sort((a, b) => kinds.indexOf(a.kind) - kinds.indexOf(b.kind));
    Find("file-findings").hidden = g_open.findings.length === 0;
    Find("finding-count").textContent = Plural(listed.length, "finding", "findings");
    Find("findings").replaceChildren();
    Find("more-findings").onclick = () => ShowMoreFindings(listed);
    ShowMoreFindings(listed);
}

function ShowMoreFindings(listed) {
    const list = Find("findings");
    const shown = list.childElementCount;
    list.append(...listed.slice(shown, shown + kFindingsAtOnce).map(FindingItem));
    const left = listed.length - list.childElementCount;
    Find("more-findings").hidden = left === 0;
    Find("more-findings").textContent = `Show more of ${FormatNumber(left)} further findings`;
}

// Only an overlooked command comes to something.
function OverlookedBadges(finding) {
    return finding.kind === "overlooked" ? [ChangeBadge(finding), SignOffBadge(finding)] : [];
}

function FindingItem(finding) {
    const summary = Make("summary", "finding", [
        Make("span", "kind", Visible(finding.command || "")),
        Make("span", "", LinesOf(finding)),
        OutcomeBadge(kFindingKinds, finding.kind),
        Make("span", "code-name", LabelOfCode(finding.code)),
        Make("span", "sentence",
            [...OverlookedBadges(finding), Visible(String(finding.sentence || ""))]),
    ]);
    const details = Make("details", "", summary);
    // The text is drawn when it is asked for.
    details.addEventListener("toggle", () => {
        if (!details.open || details.childElementCount > 1) return;
        const opened = Make("div", "opened");
        if (finding.text) AddCode(opened, String(finding.text), Count(finding.firstLine), null);
        else opened.append(Make("p", "empty", "This is about the file as a whole."));
        opened.append(...SignOffPart(finding));
        details.append(opened);
    });
    return Make("li", "", details);
}

// ---- The macros of a file ----

// Of the same name in any letter case.
function KeyOfMacro(name) {
    return String(name).toUpperCase();
}

function FillMacroFilter() {
    const select = Find("macro-filter");
    select.replaceChildren();
    AddOption(select, "", `All macros (${FormatNumber(g_open.macros.length)})`);
    const names = new Map(g_open.macros.map((macro) => [KeyOfMacro(macro.name), macro.name]));
    for (const [key, name] of names) AddOption(select, key, Visible(String(name)));
    const wanted = Find("macro").value;
    if (names.has(wanted)) select.value = wanted;
}

function ListMacros() {
    const wanted = Find("macro-filter").value;
    const listed = g_open.macros.filter((macro) => !wanted || KeyOfMacro(macro.name) === wanted);
    Find("file-macros").hidden = g_open.macros.length === 0;
    Find("call-count").textContent = `${Plural(listed.length, "macro", "macros")}, ` +
        Plural(listed.reduce((sum, macro) => sum + macro.calls.length, 0), "call", "calls");
    Find("file-macro-list").replaceChildren(...listed.map(MacroItem));
}

function PlaceOfMacro(macro) {
    const lines = LinesOf(macro).toLowerCase();
    return macro.file ? `defined in ${Visible(macro.file)}, ${lines}` : `defined in ${lines}`;
}

// How many calls came to what.
function CallBadges(macro) {
    const counts = CountBy(macro.calls.map((call) => call.outcome));
    return [...kCallOutcomes].filter(([name]) => counts.has(name)).map(([name, {label, tone}]) =>
        Make("span", `outcome tone-${tone}`, `${label}: ${FormatNumber(counts.get(name))}`));
}

function MacroItem(macro) {
    const summary = Make("summary", "macro", [
        Make("span", "macro-name", Visible(String(macro.name))),
        Make("span", "", PlaceOfMacro(macro)),
        Make("span", "call-badges", CallBadges(macro)),
    ]);
    const details = Make("details", "", summary);
    // What the calls give is drawn when it is asked for.
    details.addEventListener("toggle", () => {
        if (!details.open || details.childElementCount > 1) return;
        details.append(Make("div", "opened", MacroParts(macro)));
    });
    return Make("li", "", details);
}

function MacroParts(macro) {
    const commands = macro.legacyCommands.map((command) =>
        `${Visible(command.type)} in ${LinesOf(command).toLowerCase()}`);
    const parts = [Make("p", "", commands.length
        ? `Legacy commands in the body: ${commands.join("; ")}.`
        : "The body itself holds no legacy command; what its calls become does.")];
    const within = Count(macro.expansions) - macro.calls.length;
    if (within > 0) {
        parts.push(Make("p", "", `Other macros run it in ${Plural(within, "call", "calls")}.`));
    }
    if (Count(macro.callsElsewhere) > 0) {
        parts.push(Make("p", "", "Other files run it in " +
            `${Plural(macro.callsElsewhere, "call", "calls")}.`));
    }
    if (!macro.calls.length) return [...parts, Make("p", "empty", "This file does not call it.")];
    const list = Make("ol", "commands calls");
    const more = MakeButton("", () => ShowMoreCalls(macro, list, more));
    ShowMoreCalls(macro, list, more);
    return [...parts, list, Make("p", "", more)];
}

function ShowMoreCalls(macro, list, more) {
    const shown = list.childElementCount;
    list.append(...macro.calls.slice(shown, shown + kRowsAtOnce).map(CallItem));
    const left = macro.calls.length - list.childElementCount;
    more.hidden = left === 0;
    more.textContent = `Show more of ${FormatNumber(left)} further calls`;
}

function CallItem(call) {
    const said = call.reason || (call.sharesCommand ? "in the command of the call before" : "");
    const heading = [
        Make("span", "", LinesOf(call)),
        OutcomeBadge(kCallOutcomes, call.outcome),
        Make("span", "sentence", Visible(String(said))),
    ];
    if (!call.text) return Make("li", "", Make("div", "call", heading));
    const details = Make("details", "", Make("summary", "call", heading));
    details.addEventListener("toggle", () => {
        if (!details.open || details.childElementCount > 1) return;
        details.append(Make("div", "opened", CallParts(call)));
    });
    return Make("li", "", details);
}

// Each command beside what it becomes; where there is none, what the call expands to.
function CallParts(call) {
    const parts = (call.findings || []).map((finding) =>
        Make("p", "", Visible(String(finding.sentence))));
    for (const command of call.commands || []) {
        const source = Side("source", "Expansion", `of ${LinesOf(call).toLowerCase()}`);
        AddCode(source, String(command.source ?? ""), 1, null);
        parts.push(Make("div", "compare", [source, ResultSide(command)]));
    }
    if (!(call.commands || []).length) {
        const source = Side("source", "Expansion", `of ${LinesOf(call).toLowerCase()}`);
        AddCode(source, String(call.text ?? ""), 1, null);
        parts.push(source);
    }
    return parts;
}

// ---- The macros of all files ----

const g_macros = [];  // {name, files, calls, converted, failed, left}, by their names

// [name, calls, converted, failed, left] of each macro that the file defines or calls.
function CallsOf(file) {
    return file.calledMacros || [];
}

function SumMacros() {
    const sums = new Map();
    for (const file of g_report.files) {
        for (const [name, calls, converted, failed, left] of CallsOf(file)) {
            const key = KeyOfMacro(name);
            if (!sums.has(key)) {
                sums.set(key, {name, files: new Set(), calls: 0, converted: 0, failed: 0, left: 0});
            }
            const sum = sums.get(key);
            sum.files.add(file.index);
            sum.calls += Count(calls);
            sum.converted += Count(converted);
            sum.failed += Count(failed);
            sum.left += Count(left);
        }
    }
    return [...sums.values()];
}

function ShowMacros() {
    g_macros.push(...SumMacros().sort((a, b) => b.calls - a.calls));
    Find("macros").hidden = g_macros.length === 0;
    const label = Find("macro-label");
    label.hidden = g_macros.length === 0;
    AddOption(Find("macro"), "", "All macros");
    for (const {name, files} of g_macros) {
        AddOption(Find("macro"), KeyOfMacro(name),
            `${Visible(name)} (${Plural(files.size, "file", "files")})`);
    }
    if (!g_macros.length) return;
    Find("macro-list").replaceChildren(
        MakeHeadRow(["Macro", "Files", "Calls", "Converted", "Failed", "Not expanded"]),
        Make("tbody"));
    ShowMoreMacros();
}

function ShowMoreMacros() {
    AddRows(Find("macro-list"), Find("more-macros"), g_macros, kFirstGroups, MacroRow);
}

function MacroRow({name, files, calls, converted, failed, left}) {
    const button = MakeButton(Visible(name), () => FilterFiles("macro", KeyOfMacro(name)));
    button.className = "plain";
    const heading = Make("th", "", button);
    heading.scope = "row";
    return Make("tr", "", [heading, ...[files.size, calls, converted, failed, left].map(
        (count) => Make("td", "", FormatNumber(count)))]);
}

// ---- The commands of a file ----

const kCommandFilters = [
    {value: "", label: "All commands", holds: () => true},
    {value: "converted", label: "Converted", holds: (c) => c.outcome === "converted"},
    {value: "failed", label: "Failed", holds: (c) => c.outcome === "failed"},
    {value: "unreadable", label: "Unreadable", holds: (c) => c.outcome === "unreadable"},
    {value: "warnings", label: "With warnings", holds: (c) => WarningsOf(c).length > 0},
    {value: "mended", label: "Mended since the last run", holds: (c) => ChangeOf(c) === "mended"},
    {value: "new", label: "Failing since the last run", holds: (c) => ChangeOf(c) === "new"},
    {value: "signed", label: "Signed off", holds: (c) => StateOf(c) !== ""},
    {value: "unsigned", label: "Not signed off", holds: (c) => StateOf(c) === ""},
    {value: "search", label: "Found by the search",
     holds: (c) => g_search.text !== "" && CommandHolds(c, g_search.text)},
];

function WarningsOf(command) {
    return command.warnings || [];
}

// `chosen` is what stays chosen, even if it lets nothing through any more.
function FillCommandFilter(chosen = "") {
    const select = Find("command-filter");
    select.replaceChildren();
    for (const filter of kCommandFilters) {
        const count = g_open.commands.filter(filter.holds).length;
        const isIdle = !count ||
            (filter.value === "unsigned" && count === g_open.commands.length);
        if (filter.value && isIdle && filter.value !== chosen) continue;
        AddOption(select, filter.value, `${filter.label} (${FormatNumber(count)})`);
    }
    select.value = chosen;
}

function WhyNoCommands(file) {
    if (file.outcome === "nothing-to-convert") {
        return "No legacy command was found in this file, so it was not converted.";
    }
    if (file.outcome === "copied") return "This file was copied as it is.";
    if (file.outcome === "skipped") return "This file was skipped.";
    if (file.outcome === "failed") return "Nothing is known about the commands of this file.";
    return "The conversion has met no legacy command in this file.";
}

function ListCommands() {
    const value = Find("command-filter").value;
    const filter = kCommandFilters.find((candidate) => candidate.value === value);
    g_open.listed = [];
    g_open.commands.forEach((command, index) => {
        if (filter.holds(command)) g_open.listed.push(index);
    });
    const none = g_open.commands.length === 0;
    Find("file-commands").hidden = none;
    Find("no-commands").hidden = !none;
    Find("no-commands").textContent = none ? WhyNoCommands(g_open.file) : "";
    ShowPage(0);
}

function LastPage() {
    return Math.max(0, Math.ceil(g_open.listed.length / kCommandsPerPage) - 1);
}

function ShowPage(page) {
    g_open.page = Math.max(0, Math.min(LastPage(), page));
    const start = g_open.page * kCommandsPerPage;
    const indices = g_open.listed.slice(start, start + kCommandsPerPage);
    const list = Find("commands");
    list.start = start + 1;
    list.replaceChildren(...indices.map(CommandItem));
    ShowPager(start, indices.length);
    if (indices.includes(g_open.command)) OpenItem(g_open.command);
}

function ShowPager(start, count) {
    const total = g_open.listed.length;
    Find("command-count").textContent = count === total
        ? Plural(total, "command", "commands")
        : `${FormatNumber(start + 1)} to ${FormatNumber(start + count)} of ` +
          Plural(total, "command", "commands");
    Find("pages").hidden = LastPage() === 0;
    Find("first-page").disabled = Find("earlier-page").disabled = g_open.page === 0;
    Find("last-page").disabled = Find("later-page").disabled = g_open.page === LastPage();
}

function LinesOf(command) {
    if (command.lastLine <= command.firstLine) return `Line ${FormatNumber(command.firstLine)}`;
    return `Lines ${FormatNumber(command.firstLine)} to ${FormatNumber(command.lastLine)}`;
}

function CommandItem(index) {
    const command = g_open.commands[index];
    const warnings = WarningsOf(command).length;
    const button = Make("button", "toggle", [
        Make("span", "mark"),
        Make("span", "kind", Visible(command.type)),
        Make("span", "", LinesOf(command)),
        OutcomeBadge(kCommandOutcomes, command.outcome),
        Make("span", "warned", warnings ? Plural(warnings, "warning", "warnings") : ""),
        Make("span", "said", [ChangeBadge(command), SignOffBadge(command),
            command.macro ? Make("span", "of-macro", `from ${Visible(command.macro)}`) : "",
            Visible(command.message || "")]),
    ]);
    button.type = "button";
    button.id = `command-${index}`;
    button.setAttribute("aria-expanded", "false");
    button.addEventListener("click", () => {
        Go(g_open.file, index === g_open.command ? null : index);
    });
    return Make("li", "", button);
}

function OnCommandKey(event) {
    const steps = {ArrowDown: 1, ArrowUp: -1};
    if (!(event.key in steps) || !event.target.classList.contains("toggle")) return;
    const item = event.target.closest("li");
    const next = steps[event.key] > 0 ? item.nextElementSibling : item.previousElementSibling;
    if (next) next.querySelector(".toggle").focus();
    event.preventDefault();
}

// Opens one command, or none if `index` is null, and closes the one that was open.
function ShowCommand(index) {
    const before = g_open.command;
    if (index === before) return;
    g_open.command = index;
    if (before !== null) CloseItem(before, index === null);
    if (index === null) return;
    if (!g_open.listed.includes(index)) {
        Find("command-filter").value = "";
        ListCommands();
    }
    const page = Math.floor(g_open.listed.indexOf(index) / kCommandsPerPage);
    if (page !== g_open.page) ShowPage(page);
    else if (!Find(`opened-${index}`)) OpenItem(index);
    const button = Find(`command-${index}`);
    button.focus({preventScroll: true});
    KeepInSight(button);
}

// Scrolls only when the head of what was opened is near the window's edge or out of sight.
function KeepInSight(button) {
    const place = button.getBoundingClientRect();
    if (place.top < 0 || place.bottom > innerHeight * 0.6) button.scrollIntoView();
}

function CloseItem(index, focus) {
    const opened = Find(`opened-${index}`);
    if (!opened) return;
    opened.remove();
    const button = Find(`command-${index}`);
    button.setAttribute("aria-expanded", "false");
    button.removeAttribute("aria-controls");
    if (focus) button.focus();
}

function OpenItem(index) {
    const button = Find(`command-${index}`);
    const opened = CommandView(g_open.commands[index], index);
    opened.id = `opened-${index}`;
    button.setAttribute("aria-expanded", "true");
    button.setAttribute("aria-controls", opened.id);
    button.after(opened);
}

// ---- Source and result side by side ----

function CommandView(command, index) {
    const compare = Make("div", "compare", [SourceSide(command), ResultSide(command)]);
    const view = Make("div", "opened", [compare, ...EqualNote(index),
        ...SignOffPart(command), CommandButtons(index)]);
    view.setAttribute("role", "group");
    view.setAttribute("aria-label", `${Visible(command.type)}, ${LinesOf(command)}`);
    return view;
}

function CommandButtons(index) {
    const place = g_open.listed.indexOf(index);
    const previous = MakeButton("Previous command",
        () => Go(g_open.file, g_open.listed[place - 1]));
    const next = MakeButton("Next command", () => Go(g_open.file, g_open.listed[place + 1]));
    previous.disabled = place <= 0;
    next.disabled = place + 1 >= g_open.listed.length;
    return Make("div", "buttons",
        [previous, next, MakeButton("Close command", () => Go(g_open.file, null))]);
}

function Side(className, title, place) {
    const heading = Make("h4", "", [title, " ", Make("span", "", place)]);
    const side = Make("section", `side ${className}`, heading);
    side.setAttribute("aria-label", title);
    return side;
}

function SourceSide(command) {
    const side = Side("source", "Source", LinesOf(command).toLowerCase());
    AddCode(side, String(command.source ?? ""), command.firstLine, {
        line: Count(command.errorLine), column: ErrorCharacter(command), text: ErrorText(command),
    });
    return side;
}

// Which character of its line a command's `errorColumn` means, from 1; 0 for none. Columns are counted
// from 2 on the first line of a command. Where reading was given up at a quotation mark that has no
// partner, every line counts from 1; at a character that no command may hold, the column is that of
// the one before it.
function ErrorCharacter(command) {
    const column = Count(command.errorColumn);
    if (column === 0 || command.error === "unclosed-literal") return column;
    const isFirst = command.errorLine === command.firstLine;
    return column - (isFirst ? 1 : 0) + (command.error === "invalid-character" ? 1 : 0);
}

function ResultSide(command) {
    const line = Count(command.generatedLine);
    const converted = typeof command.generated === "string";
    const place = line ? `from line ${FormatNumber(line)}` : "";
    const side = Side("result", "Result", converted ? place : "none");
    AddNotes(side, command);
    if (converted) AddCode(side, command.generated, line || 1, null);
    else side.append(Make("p", "empty", WhyNoResult(command)));
    return side;
}

function WhyNoResult(command) {
    if (command.outcome === "unreadable") {
        return "The conversion of the file ended here; the result holds nothing that follows.";
    }
    if (command.macro) return "A call becomes this command, which cannot be converted.";
    return "In the result this command stands as a comment, followed by the message.";
}

function ErrorText(command) {
    const message = Visible(command.message || "");
    const line = Count(command.errorLine);
    if (!line) return message;
    const column = Count(command.errorColumn);
    const place = `Line ${FormatNumber(line)}` +
        (column ? `, column ${FormatNumber(column)}` : "");
    return message ? `${place}: ${message}` : place;
}

// A sentence whose names stand between grave accents.
function WithNames(text) {
    return Visible(text).split("`").map(
        (part, index) => index % 2 === 1 ? Make("code", "name", part) : part);
}

// What to change in this command, and what helps with all that have failed for the same reason.
function HintParts(command) {
    const hint = String(command.hint || "");
    const advice = kAdvice.get(command.error) || "";
    const parts = [];
    if (hint) parts.push(Make("p", "hint", [Make("b", "", "Hint: "), ...WithNames(hint)]));
    if (advice && advice !== hint) {
        parts.push(Make("p", "advice", [Make("b", "", "In general: "), ...WithNames(advice)]));
    }
    return parts;
}

// The message and the warnings stand above the result, and so beside the source.
function AddNotes(side, command) {
    const notes = Make("div", "notes");
    if (command.error || command.message) {
        notes.append(Make("div", "note tone-bad", [
            Make("h4", "", command.error ? LabelOfReason(command.error) : "Message"),
            Make("p", "message", ErrorText(command)),
            ...HintParts(command)]));
    }
    const warnings = WarningsOf(command);
    if (warnings.length) {
        const items = warnings.map((text) => Make("li", "", Visible(text)));
        notes.append(Make("div", "note tone-partly", [
            Make("h4", "", Plural(warnings.length, "warning", "warnings")),
            Make("ul", "", items)]));
    }
    if (notes.childNodes.length) side.append(notes);
}

// Shows a text line by line, the first ones at once and more on demand.
// `error` is null or tells the line that is to be marked.
function AddCode(side, text, firstNumber, error) {
    const lines = text.split("\n");
    const code = Make("pre", "code");
    const last = firstNumber + lines.length - 1;
    code.style.setProperty("--digits", Math.max(3, String(last).length));
    side.append(code);
    // A line begins a command when the one before it ended one.
    let starts = true;
    let shown = 0;
    const more = MakeButton("", () => ShowMore());
    more.classList.add("more");
    function ShowMore() {
        const end = Math.min(lines.length, shown + kLinesAtOnce);
        for (; shown < end; ++shown) {
            code.append(...CodeLine(lines[shown], firstNumber + shown, starts, error));
            if (lines[shown].trim()) starts = lines[shown].trimEnd().endsWith(".");
        }
        more.hidden = shown === lines.length;
        more.textContent = `Show more of ${FormatNumber(lines.length - shown)} further lines`;
    }
    ShowMore();
    if (!more.hidden) side.append(more);
}

function CodeLine(text, number, starts, error) {
    const line = Make("code", "line");
    line.dataset.number = number;
    const wrong = error !== null && error.line === number;
    AddHighlighted(line, text, starts, wrong ? error.column : 0);
    if (!wrong) return [line];
    line.classList.add("wrong");
    const note = Make("span", "line-note", error.text);
    note.setAttribute("role", "note");
    return [line, note];
}

// ---- Highlighting ----

const kKeywords = new Set((
    "ALL AND AS ASCENDING BEGIN BY CASES COUNT CPCT DESCENDING END EQ GE GPL GT LE LT MAXIMUM " +
    "MEAN MEDIAN MINIMUM MISSING NE NO NONE NOT OR PTILE RESPONSES RPCT SCALE STDDEV SUM THRU TO " +
    "TOTAL TPCT TYPE VALIDN WITH YES ZERO").split(" "));
// In this order: a comment begins like a subcommand, and a name may hold digits. A period at the
// end belongs to the command. Graph texts have labels, such as "DATA:", where others have
// subcommands.
const kToken = new RegExp([
    String.raw`(?<comment>/\*.*?(?:\*/|$))`,
    String.raw`(?<string>'(?:[^']|'')*'?|"(?:[^"]|"")*"?)`,
    String.raw`(?<sub>/[ \t]*[A-Za-z][\w-]*|^\s*[A-Z]+(?=:))`,
    String.raw`(?<word>[\p{L}_$#@!](?:[\p{L}\p{M}\p{N}_.$#@]*[\p{L}\p{M}\p{N}_$#@])?)`,
    String.raw`(?<number>(?:\d+(?:\.\d+)?|\.\d+)(?:[eE][+-]?\d+)?)`,
].join("|"), "gu");

// Cuts a line into pieces {text, kind, token}; put together they are the line again.
function CutLine(text, starts) {
    if (text.length > kHighlightedLength) return [{text, kind: ""}];
    if (starts && /^\s*\*/.test(text)) return [{text, kind: "comment"}];
    const pieces = [];
    let done = 0;
    for (const match of text.matchAll(kToken)) {
        if (match.index > done) pieces.push({text: text.slice(done, match.index), kind: ""});
        const first = starts && text.slice(0, match.index).trim() === "";
        pieces.push({text: match[0], kind: KindOf(match, first), token: true});
        done = match.index + match[0].length;
    }
    if (done < text.length) pieces.push({text: text.slice(done), kind: ""});
    return pieces;
}

function KindOf(match, first) {
    const groups = match.groups;
    if (groups.word !== undefined) {
        if (first) return "command";
        return kKeywords.has(groups.word.toUpperCase()) ? "keyword" : "";
    }
    return Object.keys(groups).find((name) => groups[name] !== undefined);
}

function AddHighlighted(line, text, starts, column) {
    let pieces = CutLine(text, starts);
    if (column > 0) pieces = MarkPlace(pieces, column);
    for (const piece of pieces) AddPiece(line, piece);
}

// Marks the piece in which the error lies: all of a token, whose first character is as good as
// its last, but one character of anything else. Columns count characters, not the units of a
// script's texts.
function MarkPlace(pieces, column) {
    const result = [];
    let before = column - 1;
    for (const piece of pieces) {
        const characters = before >= 0 ? [...piece.text] : [];
        const within = before >= 0 && before < characters.length;
        if (!within) result.push(piece);
        else if (piece.token) result.push({...piece, place: true});
        else result.push(...CutOut(characters, before));
        before = within ? -1 : before - characters.length;
    }
    return result;
}

function CutOut(characters, index) {
    const text = (start, end) => characters.slice(start, end).join("");
    return [
        {text: text(0, index), kind: ""},
        {text: text(index, index + 1), kind: "", place: true},
        {text: text(index + 1), kind: ""},
    ];
}

function AddPiece(line, piece) {
    if (!piece.kind && !piece.place) {
        AddPlain(line, piece.text);
        return;
    }
    const span = Make("span", piece.kind ? `t-${piece.kind}` : "");
    if (piece.place) span.classList.add("place");
    AddPlain(span, piece.text);
    line.append(span);
}

// Invisible characters stay in the text but get a label and cannot reach beyond their own span.
function AddPlain(parent, text) {
    let done = 0;
    for (const match of text.matchAll(kInvisible)) {
        if (match[0] === "\t") continue;
        parent.append(text.slice(done, match.index));
        const control = Make("span", "t-control", match[0]);
        control.dataset.code = CodeOf(match[0]);
        parent.append(control);
        done = match.index + 1;
    }
    parent.append(text.slice(done));
}

// ---- Keys and paper ----

function IsTyping(target) {
    return target instanceof HTMLElement && target.matches("input, select, textarea");
}

function OnKey(event) {
    if (event.defaultPrevented || event.ctrlKey || event.metaKey || event.altKey) return;
    if (event.key === "/" && !IsTyping(event.target)) {
        Find("search").focus();
        event.preventDefault();
    } else if (event.key === "Escape" && g_open.command !== null && !IsTyping(event.target)) {
        Go(g_open.file, null);
    }
}

function SetPrinting(printing) {
    if (g_list.printing === printing) return;
    g_list.printing = printing;
    DrawRows();
}

function ListenToPrinting() {
    // Some browsers tell by the one, some by the other.
    const print = matchMedia("print");
    print.addEventListener("change", () => SetPrinting(print.matches));
    addEventListener("beforeprint", () => SetPrinting(true));
    addEventListener("afterprint", () => SetPrinting(print.matches));
}

function Listen() {
    for (const id of kFilterIds) Find(id).addEventListener("input", UpdateFiles);
    const clicks = {
        "clear": () => { ClearFilters(); Find("search").focus(); },
        "more-groups": ShowMoreGroups,
        "more-macros": ShowMoreMacros,
        "folder-up": () => OpenFolder(FolderAbove(g_work.folder)),
        "usual-minutes": ResetMinutes,
        "save-signed": SaveSignOffs,
        "more-signed": ShowMoreOthers,
        "more-parts": ShowMoreParts,
        "previous-file": () => GoToNeighbor(-1),
        "next-file": () => GoToNeighbor(1),
        "close-file": () => Go(null, null),
        "first-page": () => ShowPage(0),
        "earlier-page": () => ShowPage(g_open.page - 1),
        "later-page": () => ShowPage(g_open.page + 1),
        "last-page": () => ShowPage(LastPage()),
        // The address stays what it is.
        "skip": (event) => { event.preventDefault(); Find("files-title").focus(); },
        "rows": OnRowClick,
    };
    for (const [id, action] of Object.entries(clicks)) Find(id).addEventListener("click", action);
    Find("open-signed").addEventListener("change", () => AddSignOffsOf(Find("open-signed")));
    addEventListener("beforeunload", OnLeave);
    Find("finding-filter").addEventListener("input", ListFindings);
    Find("macro-filter").addEventListener("input", ListMacros);
    Find("command-filter").addEventListener("input", ListCommands);
    Find("grid").addEventListener("keydown", OnGridKey);
    Find("grid").addEventListener("scroll", OnScroll, {passive: true});
    Find("commands").addEventListener("keydown", OnCommandKey);
    addEventListener("resize", OnScroll);
    addEventListener("keydown", OnKey);
    addEventListener("hashchange", FollowAddress);
    ListenToPrinting();
}

// ---- Start ----

function ReadReport() {
    const element = Find("report");
    if (!element) return null;
    try {
        return JSON.parse(element.textContent);
    } catch {
        return null;  // A page that was cut off on its way.
    }
}

function Start() {
    g_report = ReadReport();
    if (!g_report || !Array.isArray(g_report.files) || !g_report.totals) {
        AddNotice("This page holds no report, or only a part of one.");
        return;
    }
    g_report.files.forEach((file, index) => {
        file.index = index;
        if (!g_fileOfKey.has(KeyOf(file))) g_fileOfKey.set(KeyOf(file), file);
    });
    for (const id of ["totals", "charts", "files"]) Find(id).hidden = false;
    const outcomes = CountBy(g_report.files.map((file) => file.outcome));
    const codes = CountBy(g_report.files.flatMap((file) => NamesIn(file.codes)));
    const reasons = CountBy(g_report.files.flatMap((file) => NamesIn(file.errors)));
    ShowRun();
    ShowCards();
    ShowCharts(outcomes, codes, reasons);
    ShowPart();
    ShowParts();
    ShowSince();
    ReadGroups();
    ShowGroups();
    ShowMacros();
    StartWork();
    StartSignOffs();
    FillFilters(outcomes, codes, reasons);
    MakeHeadings();
    Listen();
    UpdateFiles();
    FollowAddress();
}

Start();
