"use strict";
// Opens the report page of quillet-migrate in Chromium and uses it as a person would.
//
//   report_test.js [--screenshots FOLDER] [PAGE]
//
// Without PAGE, pages are made from synthetic facts and the page that the program brings along,
// which REPORT_TEMPLATE names. With PAGE, a page that the program made is looked at; then only
// those checks run that hold for every page.
// Needs playwright-core and axe-core; scripts/check-report fetches them and starts this.

const assert = require("node:assert/strict");
const fs = require("node:fs");
const os = require("node:os");
const path = require("node:path");
const {test} = require("node:test");
const {pathToFileURL} = require("node:url");
const {chromium} = require("playwright-core");

const kTemplate = process.env.REPORT_TEMPLATE;
const kAxe = fs.readFileSync(require.resolve("axe-core/axe.min.js"), "utf8");
const kFlags = [
    "--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
    "--disable-background-networking", "--disable-component-update", "--disable-sync",
];
const kPlaceholder = "<!-- data -->";
const kScript = "<script>alert(1)</script>";

// ---- Checking ----

// The scenario that runs, and the checks of it that are not done yet.
let g_scenario = null;
let g_checks = [];

// Each check is a test of its own below its scenario: one that fails keeps no other from running.
function AddCheck(name, check) {
    g_checks.push(g_scenario.test(name, check));
}

function Check(name, good, detail) {
    AddCheck(name, () => assert.ok(good, detail === undefined ? undefined : String(detail)));
}

function CheckEqual(name, actual, expected) {
    AddCheck(name, () => assert.deepEqual(actual, expected));
}

// A scenario that breaks off fails itself, and the others still run.
async function Try(all, name, scenario) {
    await all.test(name, async (context) => {
        g_scenario = context;
        g_checks = [];
        try {
            await scenario();
        } finally {
            await Promise.all(g_checks);
        }
    });
}

// ---- Synthetic facts ----

// The same numbers in every run.
function MakeRandom(seed) {
    let state = seed;
    return (limit) => {
        state = (state + 0x6d2b79f5) | 0;
        let t = Math.imul(state ^ (state >>> 15), 1 | state);
        t = (t + Math.imul(t ^ (t >>> 7), 61 | t)) ^ t;
        return ((t ^ (t >>> 14)) >>> 0) % limit;
    };
}

const kRows = ["region", "tenure", "agegr", "branch", "educ", "lfstat", "hhclass"];
const kColumnNames = ["sex", "urban", "quarter", "wave", "car"];
const kErrors = [
    ["tables-syntax", "Invalid TABLES command syntax."],
    ["subcommand-syntax", "Unable to parse the syntax of the FTOTAL subcommand."],
    ["unknown-function", "Unrecognized summary function AVERAGE."],
    ["nothing-to-follow", "Following total tot on a TABLE subcommand does not follow anything."],
    ["total-beside-scale", "Total variable tot stacks with a scale variable."],
    ["table-too-large", "The table is too large to be converted."],
];

function SourceText(row, column, number) {
    return `TABLES /OBSERVATION=income /* in thousands */\n  /FORMAT ZERO\n` +
        `  /FTOTAL=tot 'Total of "${row}"'\n` +
        `  /TABLE=${row} + tot BY ${column} > income\n` +
        `  /STATISTICS=MEAN(income (F8.${number % 3}) 'Mean') COUNT((F6.0) 'n')\n` +
        `  /TITLE='Table ${number}. Income by ${row} and ${column}, it''s weighted'.`;
}

function GeneratedText(row, column, number) {
    return `CTABLES\n  /MRSETS COUNTDUPLICATES=YES\n  /FORMAT EMPTY=ZERO\n` +
        `  /TABLE ${row}[C] BY ${column}[C]>\n` +
        `  income[S][MEAN,'Mean',F8.${number % 3},COUNT,'n']\n` +
        "  /CATEGORIES VAR=ALL EMPTY=EXCLUDE MISSING=EXCLUDE\n" +
        `  /CATEGORIES VAR=${row.toUpperCase()} TOTAL=YES POSITION=AFTER ` +
        `LABEL='Total of "${row}"'\n  /SLABELS POSITION=ROW\n` +
        `  /TITLES TITLE='Table ${number}. Income by ${row} and ${column}, it''s weighted'.`;
}

function ConvertedCommand(line, number, random) {
    const row = kRows[random(kRows.length)];
    const column = kColumnNames[random(kColumnNames.length)];
    const warning = "The setting AUTOLABEL has no equivalent and was left out.";
    return {
        type: "TABLES", outcome: "converted", firstLine: line, lastLine: line + 5,
        source: SourceText(row, column, number), generated: GeneratedText(row, column, number),
        generatedLine: line + 40, warnings: random(12) ? [] : [warning],
    };
}

function FailedCommand(line, number, random) {
    const [error, message] = kErrors[Math.min(random(kErrors.length), random(kErrors.length))];
    const source = SourceText("region", "sex", number);
    return {
        type: "TABLES", outcome: "failed", firstLine: line, lastLine: line + 5, source, error,
        errorLine: line + 3, errorColumn: 15, message, warnings: [],
        hint: `no period before line ${line + 3}? write \`region + sex\``,
    };
}

const kUnreadable = {
    type: "command", outcome: "unreadable", firstLine: 812, lastLine: 813,
    source: "COMPUTE label = 'never closed.\nEXECUTE.", error: "unclosed-literal", errorLine: 812,
    errorColumn: 17, message: "A literal is not closed.", warnings: [],
};
const kChart = {
    type: "IGRAPH", outcome: "converted", firstLine: 90, lastLine: 91,
    source: "IGRAPH /X1 = $case TYPE = SCALE /Y = VAR(level.mm) TYPE = SCALE\n" +
        "  /AREA POINTLABEL=VAL BREAK=NONE BASELINE=10.",
    generated: "GGRAPH\n  /GRAPHDATASET NAME=\"iGraphDataset\" VARIABLES=level.mm\n" +
        "    MISSING=LISTWISE REPORTMISSING=NO\n  /GRAPHSPEC SOURCE=INLINE EDITABLE=YES.\n" +
        "BEGIN GPL\n  SOURCE: s=userSource(id(\"iGraphDataset\"))\n" +
        "  DATA: level_mm=col(source(s), name(\"level.mm\"))\n" +
        "  GUIDE: axis(dim(1), label(\"Case\"))\n" +
        "  ELEMENT: area(position(casenum*level_mm), missing.interpolate())\nEND GPL.",
    generatedLine: 1204,
    warnings: ["The size of the chart was left out.", "The caption was left out: it is empty."],
};

// A file whose counts follow from its commands.
function MakeFile(name, commands, more) {
    const of = (outcome) => commands.filter((command) => command.outcome === outcome).length;
    const [converted, failed, unreadable] = ["converted", "failed", "unreadable"].map(of);
    return {
        path: name, outcome: unreadable ? "stopped" : failed ? "partly" : "converted", bytes: 1234,
        modified: 1153000000, encoding: "utf-8", encodingReason: "valid-utf-8",
        layout: "interactive", layoutReason: "default", blankLines: "mean-nothing",
        blankLinesReason: "default", lines: 400, copied: 7,
        found: converted + failed + unreadable, converted, failed, unreadable, overlooked: 0,
        listed: commands.length,
        warnings: commands.reduce((sum, command) => sum + command.warnings.length, 0), changed: 0,
        told: 0, message: "", commands, findings: [], ...more,
    };
}

// The same with findings, which decide the outcome.
function WithFindings(file, findings) {
    const of = (kind) => findings.filter((finding) => finding.kind === kind).length;
    const overlooked = of("overlooked");
    return {
        ...file, findings, overlooked, changed: of("changed"), told: of("told"),
        found: file.found + overlooked,
        outcome: overlooked ? "overlooked" : of("changed") ? "changed" : file.outcome,
    };
}

function MakeFinding(code, kind, line, more) {
    return {
        code, kind, command: kind === "overlooked" ? "TABLES" : null, firstLine: line,
        lastLine: line + 1, causeLine: 1, macro: null,
        sentence: `What is in line ${line} was found (${code}).`,
        text: "TABLES\n  /TABLE=a BY b.", ...more,
    };
}

// A file without commands that anything is known of.
function MakeOther(name, outcome, message) {
    const none = {lines: 0, copied: 0, encoding: ""};
    return MakeFile(name, [], {outcome, message, ...none});
}

function Totals(files) {
    const sum = (key) => files.reduce((total, file) => total + file[key], 0);
    const of = (outcome) => files.filter((file) => file.outcome === outcome).length;
    const commands = {
        commandsFound: sum("found"), commandsConverted: sum("converted"),
        commandsFailed: sum("failed"), commandsUnreadable: sum("unreadable"),
        commandsOverlooked: sum("overlooked"),
    };
    return {
        files: files.length, filesConverted: of("converted"), filesChanged: of("changed"),
        filesPartly: of("partly"), filesUnconverted: of("unconverted"),
        filesOverlooked: of("overlooked"), filesNothing: of("nothing-to-convert"),
        filesStopped: of("stopped"), filesKept: files.filter((file) => file.kept).length,
        filesEdited: files.filter((file) => file.result === "edited").length,
        filesOutdated: files.filter((file) => file.sourceChanged).length,
        filesOrphaned: files.filter((file) => file.result === "orphaned").length,
        filesCopied: of("copied"), filesSkipped: of("skipped"), filesFailed: of("failed"),
        bytes: sum("bytes"), commands: sum("copied") + sum("listed"),
        commandsCopied: sum("copied"), ...commands, warnings: sum("warnings"),
        findingsChanged: sum("changed"), findingsTold: sum("told"),
    };
}

function MakeReport(files, more) {
    files.sort((a, b) => Buffer.compare(Buffer.from(a.path), Buffer.from(b.path)));
    return {
        format: "quillet-report", formatVersion: 2, quilletVersion: "0.1.0",
        source: "/srv/archive/surveys", target: "/srv/archive/surveys-new", layout: "auto",
        dryRun: false, shard: null, started: "2026-11-21T03:00:00Z", seconds: 12.34,
        totals: Totals(files), sinceLastRun: null, otherSignOffs: [],
        files, ...more,
    };
}

// What no text can end a script element with.
function Embed(id, value) {
    const json = JSON.stringify(value).replace(/[<\u2028\u2029]/g,
        (c) => "\\u" + c.charCodeAt(0).toString(16).padStart(4, "0"));
    return `<script type="application/json" id="${id}">${json}</script>\n`;
}

// Failures of several commands that are equal but for names and literals; in these reports, those
// with one reason and equal sources up to digits.
function GroupsOf(files) {
    const groups = new Map();
    files.forEach(({commands}, file) => commands.forEach(({error, source}, command) => {
        if (!error) return;
        const key = `${error} ${source.replace(/\d+/g, "0")}`;
        if (!groups.has(key)) groups.set(key, {error, places: []});
        groups.get(key).places.push([file, command]);
    }));
    return [...groups.values()].filter((group) => group.places.length > 1);
}

// How often each name occurs, the names in order.
function CountsOf(names) {
    const counts = new Map();
    for (const name of names.filter(Boolean).sort()) counts.set(name, (counts.get(name) || 0) + 1);
    return Object.fromEntries(counts);
}

function MakePage(report, groups = GroupsOf(report.files)) {
    const chunks = [];
    const files = report.files.map(({commands, findings, ...file}, index) => {
        const facts = {
            errors: CountsOf(commands.map((command) => command.error)),
            codes: CountsOf(findings.map((finding) => finding.code)), ...file,
        };
        if (!commands.length && !findings.length) return facts;
        chunks.push(Embed(`chunk-${index}`, {findings, commands}));
        return {...facts, chunk: index};
    });
    const data = Embed("report", {...report, files, groups}) + chunks.join("");
    const template = fs.readFileSync(kTemplate, "utf8");
    if (template.split(kPlaceholder).length !== 2) throw new Error("not one placeholder");
    return template.replace(kPlaceholder, () => data);
}

// Everything that can go wrong with a text, in the places where texts stand.
const kHostile = [
    kScript, "</script><img src=x onerror=alert(2)>", "<!-- <script> -->", "&lt;b&gt; &amp;",
    "\u2028\u2029", "\u05e9\u05dc\u05d5\u05dd \u202eabc\u202c \u0627\u0644\u0639", "$& $1 `${1}`",
    "\ud83d\ude00 caf\u0065\u0301", "tab\there", "nul \u0000 bell \u0007",
];

function HostileCommands() {
    const text = kHostile.join("\n");
    const base = {type: "TABLES", firstLine: 1, lastLine: kHostile.length};
    return [
        {...base, outcome: "converted", source: text, generated: `${text}\n'${kScript}'.`,
         generatedLine: 3, warnings: kHostile},
        {...base, outcome: "failed", source: text, error: "tables-syntax", errorLine: 2,
         errorColumn: 5, message: kHostile.join(" "), hint: `\`${kScript}`, warnings: []},
        {...base, outcome: "failed", source: `TABLES '${"x".repeat(200000)}'.`, lastLine: 1,
         error: "constructor", errorLine: 1, errorColumn: 190000, message: kScript, warnings: []},
        {...base, outcome: "failed", source: "a 'b' 12\n".repeat(5000), lastLine: 5000,
         error: "unknown", errorLine: 0, errorColumn: 0, message: "", warnings: []},
    ];
}

const kOddName = "odd/two\nlines \"quoted\" 'twice' \u202egnp.syn";
const kMarkupName = `odd/${kScript}<b>.syn`;

function MixedReport() {
    const random = MakeRandom(7);
    const files = [
        MakeFile("household/wave3/tables.syn", [
            ConvertedCommand(12, 1, () => 0), FailedCommand(30, 2, () => 0), kChart,
            ConvertedCommand(120, 3, random),
        ], {encoding: "windows-1252", bytes: 48211}),
        MakeFile("labour force/q2 + q3.syn", [ConvertedCommand(3, 4, random), kUnreadable], {}),
        MakeFile("plain/frequencies.syn", [], {}),
        WithFindings(MakeFile("odd/zones/macros.syn", [ConvertedCommand(80, 9, random)], {
            layout: "batch", layoutReason: "reads-well",
        }), [
            MakeFinding("include", "told", 2, {sentence: kHostile.join(" "), text: kScript}),
            MakeFinding("swallowed", "changed", 5, {}),
            ...Array.from({length: 150}, (_, i) => MakeFinding("macro-body", "overlooked", 10 + i,
                {macro: "!f"})),
            MakeFinding("open-comment", "overlooked", 200, {lastLine: 200}),
        ]),
        WithFindings(MakeFile("odd/zones/encoding.syn", [ConvertedCommand(3, 10, random)], {}),
            [MakeFinding("encoding-doubtful", "changed", 1, {text: "", lastLine: 1})]),
        MakeOther("odd/zones/data.csv", "nothing-to-convert", ""),
        MakeFile("plain/kept.syn", [ConvertedCommand(8, 5, random)], {kept: true}),
        MakeFile(kOddName, [FailedCommand(4, 6, () => 3)], {}),
        MakeFile(kMarkupName, HostileCommands(), {bytes: 999999}),
        MakeFile("odd/\ufffd.syn", [], {rawPath: "odd/%FF.syn", bytes: 1}),
        MakeFile("odd/\ufffd.syn", [ConvertedCommand(1, 7, random)],
            {rawPath: "odd/%FE.syn", bytes: 2}),
        MakeFile("odd/\u05e2\u05d1\u05e8\u05d9\u05ea/\u05d0.syn", [], {}),
        MakeFile(`odd/${"long-".repeat(60)}name.syn`, [], {}),
        MakeOther("data/picture.png", "copied", ""),
        MakeOther("data/survey.dat", "skipped", "not a text"),
        MakeOther("locked/secret.syn", "failed", "cannot be read: Permission denied"),
    ];
    for (let i = 0; i < 40; ++i) {
        const number = String(i).padStart(2, "0");
        files.push(MakeFile(`many/file-${number}.syn`, [ConvertedCommand(i + 1, i, random)],
            {bytes: 100 + random(100000)}));
    }
    return MakeReport(files, {});
}

// An archive as large as the page has to bear. `perFile` tells how many commands a file has.
function LargeReport(fileCount, perFile) {
    const random = MakeRandom(11);
    const themes = ["household", "labour", "customers", "libraries", "transport", "health"];
    const files = [];
    for (let i = 0; i < fileCount; ++i) {
        const commands = [];
        for (let j = 0; j < perFile; ++j) {
            const make = random(40) ? ConvertedCommand : FailedCommand;
            commands.push(make(12 + 9 * j, j + 1, random));
        }
        if (random(150) === 0) commands.push(kUnreadable);
        const name = `${themes[i % themes.length]}/${1990 + (i * 7) % 20}/` +
            `tables-${String(i).padStart(4, "0")}.syn`;
        files.push(MakeFile(name, commands, {
            copied: random(60), bytes: 600 * perFile + random(20000), lines: 20 + 9 * perFile,
            encoding: random(2) ? "windows-1252" : "utf-8", kept: random(90) === 0,
        }));
    }
    if (fileCount > 100) {
        for (let i = 0; i < 60; ++i) {
            files.push(MakeOther(`transport/data-${i}.dat`, "skipped", "not a text"));
        }
        files.push(MakeOther("health/2001/closed.syn", "failed",
            "cannot be read: Permission denied"));
    }
    return MakeReport(files, {seconds: 17.6});
}

// ---- The browser ----

let g_browser = null;
let g_folder = "";
let g_screenshots = "";

// Opens a page and keeps an ear on it: CheckQuiet tells whether it behaved.
async function Open(file, {hash = "", scheme = "light", options = {}} = {}) {
    const context = await g_browser.newContext({
        colorScheme: scheme, viewport: {width: 1400, height: 900}, ...options,
    });
    // How often the page reads JSON shows what it reads before anybody asks.
    await context.addInitScript(() => {
        const parse = JSON.parse;
        window.parsed = 0;
        JSON.parse = (...all) => {
            ++window.parsed;
            return parse(...all);
        };
    });
    const page = await context.newPage();
    page.complaints = [];
    page.on("console", (message) => {
        if (["error", "warning"].includes(message.type())) page.complaints.push(message.text());
    });
    page.on("pageerror", (error) => page.complaints.push(String(error)));
    page.on("dialog", (dialog) => {
        page.complaints.push(`dialog: ${dialog.message()}`);
        dialog.dismiss();
    });
    page.on("request", (request) => {
        const own = request.url().startsWith("file:") && request.isNavigationRequest();
        if (!own) page.complaints.push(`request: ${request.url()}`);
    });
    const address = pathToFileURL(path.resolve(file)).href + hash;
    page.started = Date.now();
    await page.goto(address, {waitUntil: "load"});
    return page;
}

async function Close(page, name) {
    CheckEqual(`${name}: no console message, no dialog, no request`, page.complaints, []);
    await page.context().close();
}

async function CheckAxe(page, name) {
    await page.evaluate(kAxe);
    const result = await page.evaluate(() =>
        window.axe.run(document, {resultTypes: ["violations"]}));
    const grave = result.violations.filter((v) => ["serious", "critical"].includes(v.impact));
    const words = grave.map((v) => `${v.id} at ${v.nodes.map((n) => n.target).slice(0, 3)}`);
    CheckEqual(`${name}: axe finds nothing serious`, words, []);
    Check(`${name}: axe looked at something`, result.passes.length > 10, result.passes.length);
}

// Takes a picture of a whole page, or of one part of it, if pictures are wanted.
async function Picture(page, name, part) {
    if (!g_screenshots) return;
    const file = path.join(g_screenshots, `${name}.png`);
    if (part) await page.locator(part).screenshot({path: file});
    else await page.screenshot({path: file, fullPage: true});
}

// Makes a PDF, if pictures are wanted.
async function Print(page, name) {
    if (!g_screenshots) return;
    await page.pdf({path: path.join(g_screenshots, `${name}.pdf`), format: "A4"});
}

// ---- What a page shows ----

const Text = (page, selector) => page.locator(selector).innerText();

// The rows in sight, in order of their place in the list.
function ShownRows(page) {
    return page.evaluate(() => [...document.querySelectorAll("#rows [data-index]")]
        .map((row) => ({
            index: Number(row.dataset.index), path: row.firstChild.title,
            cells: [...row.children].map((cell) => cell.textContent),
        })).sort((a, b) => a.index - b.index));
}

const FirstPaths = async (page, count) =>
    (await ShownRows(page)).slice(0, count).map((row) => row.path);

// The text of one side as its lines show it, and their numbers.
function ReadSide(page, side) {
    return page.evaluate((name) => {
        const lines = [...document.querySelectorAll(`.${name} .line`)];
        return {
            text: lines.map((line) => line.textContent).join("\n"),
            numbers: lines.map((line) => Number(line.dataset.number)),
        };
    }, side);
}

const Focused = (page) => page.evaluate(() =>
    document.activeElement.id || document.activeElement.textContent);

// Changes the address and waits until the page has followed.
function GoTo(page, hash) {
    return page.evaluate((wanted) => new Promise((resolve) => {
        addEventListener("hashchange", () => resolve(), {once: true});
        location.hash = wanted;
    }), hash);
}

// Is `condition` met in the page before long?
function Comes(page, condition) {
    return page.waitForFunction(condition, null, {timeout: 5000}).then(() => true, () => false);
}

function WaitForFile(page) {
    return page.locator("#file:not([hidden])").waitFor();
}

async function OpenCommand(page, index) {
    await page.locator(`#command-${index}`).click();
    await page.locator(`#opened-${index}`).waitFor();
}

const Formatted = (number) => number.toLocaleString("en-US");

// The file's way to be written in an address.
function HashOf(file, command) {
    const address = new URLSearchParams();
    address.set(file.rawPath ? "raw" : "file", file.rawPath || file.path);
    if (command !== undefined) address.set("command", command + 1);
    return `#${address}`;
}

// ---- Checks that hold for every page ----

// What the page carries, read as the format describes it.
function ReadData(page) {
    return page.evaluate(() => {
        const read = (id) => JSON.parse(document.getElementById(id).textContent);
        const report = read("report");
        const chunks = {};
        // Not all of an archive: the test would need more memory than the page.
        for (const file of report.files.filter((f) => "chunk" in f).slice(0, 200)) {
            chunks[file.chunk] = read(`chunk-${file.chunk}`);
        }
        return {report, chunks};
    });
}

function CheckData(name, {report, chunks}) {
    const files = report.files;
    CheckEqual(`${name}: format`, [report.format, report.formatVersion], ["quillet-report", 2]);
    const sum = (key) => files.reduce((total, file) => total + file[key], 0);
    const totals = report.totals;
    CheckEqual(`${name}: totals are the files' sums`,
        [totals.files, totals.bytes, totals.commandsCopied, totals.commandsConverted,
         totals.commandsFailed, totals.commandsUnreadable, totals.warnings, totals.commandsFound,
         totals.commandsOverlooked, totals.findingsChanged, totals.findingsTold],
        [files.length, ...["bytes", "copied", "converted", "failed", "unreadable", "warnings",
            "found", "overlooked", "changed", "told"].map(sum)]);
    CheckEqual(`${name}: every legacy command has come to something`, totals.commandsFound,
        totals.commandsConverted + totals.commandsFailed + totals.commandsUnreadable +
        totals.commandsOverlooked);
    const wrong = [];
    for (const file of files.filter((f) => f.chunk in chunks)) {
        const {commands, findings} = chunks[file.chunk];
        const of = (kind) => findings.filter((finding) => finding.kind === kind).length;
        const codes = CountsOf(findings.map((finding) => finding.code));
        const errors = CountsOf(commands.map((c) => c.error));
        if (commands.length !== file.listed || of("overlooked") !== file.overlooked ||
            of("changed") !== file.changed || of("told") !== file.told ||
            JSON.stringify(codes) !== JSON.stringify(file.codes) ||
            JSON.stringify(errors) !== JSON.stringify(file.errors)) wrong.push(file.path);
    }
    CheckEqual(`${name}: files agree with their commands`, wrong, []);
}

async function CheckTotals(page, name, report) {
    const cards = await page.locator(".card .figure").allInnerTexts();
    const totals = report.totals;
    CheckEqual(`${name}: cards`, cards, [
        totals.files, totals.commandsFound, totals.commandsConverted, totals.commandsOverlooked,
        totals.commandsFailed + totals.commandsUnreadable, totals.warnings].map(Formatted));
    const count = (outcome) => report.files.filter((file) => file.outcome === outcome).length;
    const order = ["converted", "changed", "partly", "unconverted", "overlooked", "stopped",
        "failed", "nothing-to-convert", "copied", "skipped"];
    CheckEqual(`${name}: chart of files`, await page.locator("#file-chart .amount").allInnerTexts(),
        order.map(count).filter((number) => number > 0).map(Formatted));
    CheckEqual(`${name}: chart of commands`,
        await page.locator("#command-chart .amount").allInnerTexts(),
        [totals.commandsConverted, totals.commandsFailed, totals.commandsUnreadable,
         totals.commandsOverlooked].map(Formatted));
    for (const [chart, member] of [["finding", "codes"], ["reason", "errors"]]) {
        const counts = new Map();
        for (const one of report.files.flatMap((file) => Object.entries(file[member]))) {
            const {sum, files} = counts.get(one[0]) || {sum: 0, files: 0};
            counts.set(one[0], {sum: sum + one[1], files: files + 1});
        }
        const sorted = [...counts.values()].sort((a, b) => b.sum - a.sum);
        CheckEqual(`${name}: chart of each ${chart}`,
            await page.locator(`#${chart}-chart .amount`).allInnerTexts(),
            sorted.map(({sum}) => Formatted(sum)));
        CheckEqual(`${name}: files of each ${chart}`,
            (await page.locator(`#${chart}-chart tbody td:last-child`).allInnerTexts()).sort(),
            sorted.map(({files}) =>
                `in ${Formatted(files)} ${files === 1 ? "file" : "files"}`).sort());
    }
}

const kSortKeys = {
    path: null, outcome: (f) => ["failed", "stopped", "overlooked", "unconverted", "partly",
        "changed", "skipped", "copied", "converted", "nothing-to-convert"].indexOf(f.outcome),
    converted: (f) => f.converted, overlooked: (f) => f.overlooked, failed: (f) => f.failed + f.unreadable,
    warnings: (f) => f.warnings, bytes: (f) => f.bytes,
};

function Sorted(files, key, descending) {
    const rank = kSortKeys[key];
    const indexed = files.map((file, index) => ({file, by: rank ? rank(file) : index, index}));
    const sign = descending ? -1 : 1;
    indexed.sort((a, b) => sign * (a.by - b.by) || a.index - b.index);
    return indexed.map((entry) => entry.file);
}

// Sorts by each column, both ways, and compares the first rows by a number that tells files apart.
async function CheckSorting(page, name, report) {
    for (const key of Object.keys(kSortKeys)) {
        for (let time = 0; time < 2; ++time) {
            await page.locator(`[data-column=${key}] button`).click();
            const order = await page.locator(`[data-column=${key}]`).getAttribute("aria-sort");
            const rows = (await ShownRows(page)).slice(0, 12);
            const expected = Sorted(report.files, key, order === "descending").slice(0, 12);
            CheckEqual(`${name}: sorted by ${key}, ${order}`,
                rows.map((row) => [row.cells[2], row.cells[5]]),
                expected.map((file) => [file.converted, file.warnings].map(Formatted)));
            CheckEqual(`${name}: ${key} alone is sorted`,
                await page.locator("[aria-sort$=ending]").count(), 1);
        }
    }
    if (await page.locator("[data-column=path]").getAttribute("aria-sort") !== "ascending") {
        await page.locator("[data-column=path] button").click();
    }
}

async function CheckFilters(page, name, report) {
    const all = Formatted(report.files.length);
    const files = report.files.length === 1 ? "file" : "files";
    const told = (count) => {
        const of = count === report.files.length ? "" : `${Formatted(count)} of `;
        return `${of}${all} ${files}`;
    };
    for (const outcome of new Set(report.files.map((file) => file.outcome))) {
        await page.locator("#outcome").selectOption(outcome);
        CheckEqual(`${name}: outcome ${outcome}`, await Text(page, "#count"),
            told(report.files.filter((file) => file.outcome === outcome).length));
    }
    await page.locator("#outcome").selectOption("");
    for (const [filter, member] of [["finding", "codes"], ["reason", "errors"]]) {
        const select = page.locator(`#${filter}`);
        const names = new Set(report.files.flatMap((file) => Object.keys(file[member])));
        Check(`${name}: a ${filter} can be chosen if there are any`,
            await select.isEnabled() === names.size > 0);
        for (const one of names) {
            await select.selectOption(one);
            CheckEqual(`${name}: ${filter} ${one}`, await Text(page, "#count"),
                told(report.files.filter((file) => Object.hasOwn(file[member], one)).length));
        }
        if (names.size) await select.selectOption("");
    }
    if (!report.files.length) return;
    const word = report.files[report.files.length - 1].path.slice(-9);
    await page.locator("#search").fill(word.toUpperCase());
    const wanted = word.toUpperCase().trim().toLowerCase();
    CheckEqual(`${name}: search`, await Text(page, "#count"), told(report.files.filter((file) =>
        file.path.toLowerCase().includes(wanted) ||
        file.message.toLowerCase().includes(wanted)).length));
    await page.locator("#search").fill("");
}

// Opens a command and compares what it shows with the facts.
async function CheckCommand(page, name, command, index) {
    await OpenCommand(page, index);
    const opened = page.locator(`#opened-${index}`);
    const more = opened.locator(".more:visible");
    while (await more.count()) await more.first().click();
    const source = await ReadSide(page, "source");
    CheckEqual(`${name}: source`, source.text, command.source);
    const lines = command.source.split("\n").length;
    CheckEqual(`${name}: source lines`, [source.numbers[0], source.numbers.at(-1)],
        [command.firstLine, command.firstLine + lines - 1]);
    const result = await ReadSide(page, "result");
    CheckEqual(`${name}: result`, result.text, command.generated || "");
    if (command.generated) {
        CheckEqual(`${name}: result line`, result.numbers[0], command.generatedLine);
    }
    const marked = await opened.locator(".wrong").evaluateAll((all) =>
        all.map((line) => Number(line.dataset.number)));
    CheckEqual(`${name}: marked line`, marked, command.errorLine ? [command.errorLine] : []);
    CheckEqual(`${name}: warnings`, await opened.locator(".notes li").count(),
        command.warnings.length);
    if (command.message) {
        Check(`${name}: message`, (await opened.locator(".message").count()) === 1);
    }
    const hints = (command.hint ? [`Hint: ${command.hint.replaceAll("`", "")}`] : []);
    CheckEqual(`${name}: hint`, await opened.locator(".notes .hint").allTextContents(), hints);
    const known = kErrors.some(([error]) => error === command.error);
    Check(`${name}: advice`, !known || (await opened.locator(".notes .advice").count()) === 1);
}

// Looks into a few files: the first of each outcome that have commands.
async function CheckCommands(page, name, {report, chunks}) {
    const files = [];
    for (const file of report.files.filter((f) => f.chunk in chunks)) {
        const alike = files.filter((f) => f.outcome === file.outcome).length;
        if (alike < 2) files.push(file);
    }
    for (const file of files) {
        await GoTo(page, HashOf(file));
        for (let index = 0; index < Math.min(5, chunks[file.chunk].commands.length); ++index) {
            await CheckCommand(page, `${name}: ${file.path} #${index + 1}`,
                chunks[file.chunk].commands[index], index);
        }
        await CheckAxe(page, `${name}: ${file.path}`);
    }
}

async function CheckPaper(page, name) {
    await page.emulateMedia({media: "print"});
    const looks = await page.evaluate(() => {
        const style = getComputedStyle(document.body);
        const seen = (element) => element.checkVisibility();
        return {
            colors: [style.color, style.backgroundColor],
            controls: [...document.querySelectorAll("input, select, .action")].filter(seen).length,
        };
    });
    CheckEqual(`${name}: print is black on white without controls`, looks,
        {colors: ["rgb(0, 0, 0)", "rgb(255, 255, 255)"], controls: 0});
    const paper = await page.pdf({format: "A4"});
    Check(`${name}: print has pages`, paper.length > 5000, paper.length);
    await page.emulateMedia({media: "screen"});
}

async function TestAnyPage(file, name) {
    for (const scheme of ["light", "dark"]) {
        const page = await Open(file, {scheme});
        const data = await ReadData(page);
        await CheckAxe(page, `${name}, ${scheme}`);
        if (scheme === "light") {
            CheckData(name, data);
            await CheckTotals(page, name, data.report);
            await CheckSorting(page, name, data.report);
            await CheckFilters(page, name, data.report);
            await CheckPaper(page, name);
        }
        await CheckCommands(page, `${name}, ${scheme}`, data);
        await Close(page, `${name}, ${scheme}`);
    }
}

// ---- Checks of the pages made here ----

async function TestSearch(file) {
    const page = await Open(file);
    const shown = async (text) => {
        await page.locator("#search").fill(text);
        return FirstPaths(page, 5);
    };
    CheckEqual("search finds part of a path", await shown("FORCE/q2 +"),
        ["labour force/q2 + q3.syn"]);
    CheckEqual("search finds a message", await shown("permission"), ["locked/secret.syn"]);
    CheckEqual("search is no pattern", await shown(".*"), []);
    CheckEqual("an empty list says so", await Text(page, "#rows"), "No file matches.");
    CheckEqual("the count is announced", await page.locator("#count").getAttribute("role"),
        "status");
    await page.locator("#clear").click();
    CheckEqual("all files are back", await Text(page, "#count"), "56 files");
    await page.locator("#outcome").selectOption("kept");
    CheckEqual("kept files", await FirstPaths(page, 5), ["plain/kept.syn"]);
    await page.locator("#file-chart button", {hasText: "Skipped"}).click();
    CheckEqual("the chart filters", await FirstPaths(page, 5), ["data/survey.dat"]);
    CheckEqual("the chart sets the filter", await page.locator("#outcome").inputValue(), "skipped");
    await page.locator("#reason-chart button", {hasText: "Total that follows nothing"}).click();
    CheckEqual("a reason filters", await page.locator("#rows [data-index]").count(), 1);
    await Close(page, "search");
}

// Waits until all texts have been looked through.
async function Searched(page, text) {
    await page.locator("#search").fill(text);
    await page.waitForFunction(() => document.getElementById("searching").textContent === "");
    return FirstPaths(page, 5);
}

async function TestSearchInTexts() {
    const hint = "Name the weight variable";
    const files = [
        MakeFile("a.syn", [kChart], {}),
        MakeFile("b.syn", [kChart, {...FailedCommand(3, 1, () => 0), hint}], {}),
        WithFindings(MakeFile("c.syn", [], {}), [MakeFinding("macro-body", "overlooked", 4,
            {sentence: "In macro <!f> of \"this\" file."})]),
        MakeFile("d.syn", [{...kUnreadable, source: "a\tb\nC"}], {}),
    ];
    const page = await OpenReport("texts", MakeReport(files, {}));
    const cases = [
        ["a source", "VAR(LEVEL.mm)", ["a.syn", "b.syn"]],
        ["a hint", "weight VARIABLE", ["b.syn"]],
        ["a message", "literal is not", ["d.syn"]],
        ["a finding", "<!F> of \"this\"", ["c.syn"]],
        ["a warning", "caption was", ["a.syn", "b.syn"]],
        ["a result's text", "usersource", ["a.syn", "b.syn"]],
        ["no name of a member", "firstline", []], ["no pattern", "v.r(level", []],
        ["a tab", "a\tb", ["d.syn"]],
    ];
    for (const [name, text, expected] of cases) {
        CheckEqual(`search finds ${name}`, await Searched(page, text), expected);
    }
    await Searched(page, "weight");
    await page.locator("#row-0").click();
    await WaitForFile(page);
    CheckEqual("of a file those commands are shown", [
        await page.locator("#command-filter").inputValue(),
        await Text(page, "#command-count")], ["search", "1 command"]);
    await OpenCommand(page, 1);
    CheckEqual("a hint stands with the reason", await Text(page, ".note .hint"), `Hint: ${hint}`);
    await Close(page, "search in texts");
}

async function TestLinks() {
    const made = {result: "new"};
    const files = [
        MakeFile("a b/50% #1?.syn", [], made), MakeFile("c.syn", [], {}),
        MakeFile("d/\ufffd%.syn", [], {...made, rawPath: "d/%FF%25.syn"}),
        MakeFile("e.syn", [], {result: "orphaned"}),
    ];
    const linksOf = async (more) => {
        const page = await OpenReport("links", MakeReport(files, more));
        const found = {};
        for (const file of files) {
            await GoTo(page, HashOf(file));
            found[file.path] = await page.locator("#file-facts a").evaluateAll((all) =>
                all.map((link) => link.getAttribute("href")));
        }
        await Close(page, "links");
        return found;
    };
    CheckEqual("source and result can be opened", await linksOf({source: "/srv/old files"}), {
        "a b/50% #1?.syn": ["file:///srv/old%20files/a%20b/50%25%20%231%3F.syn",
            "a%20b/50%25%20%231%3F.syn"],
        "c.syn": ["file:///srv/old%20files/c.syn"],
        "d/\ufffd%.syn": ["file:///srv/old%20files/d/%FF%25.syn", "d/%FF%25.syn"],
        "e.syn": ["e.syn"],
    });
    const none = await linksOf({source: "/srv/one, /srv/two", dryRun: true});
    CheckEqual("where neither is known nothing can", Object.values(none).flat(), []);
    const drive = await linksOf({source: "C:\\old files", dryRun: true});
    CheckEqual("drives are folders", drive["c.syn"], ["file:///C:/old%20files/c.syn"]);
}

async function TestPaths(file) {
    const page = await Open(file);
    const row = (text) => page.locator("#rows [data-index]", {hasText: text}).first();
    await page.locator("#search").fill("quoted");
    CheckEqual("line ends and turned directions show", await FirstPaths(page, 5),
        ["odd/two\u240alines \"quoted\" 'twice' \u27e8U+202E\u27e9gnp.syn"]);
    await page.locator("#search").fill("alert");
    await row(kScript).click();
    await WaitForFile(page);
    CheckEqual("markup in a name is text", await Text(page, "#file-title"), kMarkupName);
    await page.locator("#search").fill("\ufffd");
    for (const raw of ["odd/%FF.syn", "odd/%FE.syn"]) {
        await GoTo(page, HashOf({rawPath: raw}));
        await page.locator("#file-facts", {hasText: raw}).waitFor();
        CheckEqual(`${raw} is told apart`,
            await page.locator("#rows [aria-selected=true]").count(), 1);
    }
    await Close(page, "paths");
}

async function TestHostile(file, report) {
    const page = await Open(file, {hash: HashOf({path: kMarkupName})});
    const commands = report.files.find((f) => f.path === kMarkupName).commands;
    const before = await page.evaluate(() => document.querySelectorAll("script, img, b").length);
    for (const [index, command] of commands.entries()) {
        await OpenCommand(page, index);
        const opened = await CountElements(page, `#opened-${index} *`);
        Check(`hostile command ${index + 1} is laid out in part`, opened < 6000, opened);
        await page.keyboard.press("Escape");
        await page.locator(`#opened-${index}`).waitFor({state: "detached"});
        await CheckCommand(page, `hostile command ${index + 1}`, command, index);
    }
    await OpenCommand(page, 0);
    Check("markup shows as text", (await Text(page, ".source")).includes(kScript));
    CheckEqual("markup in warnings shows as text",
        await page.locator(".notes li").first().textContent(), kScript);
    CheckEqual("invisible characters are labelled",
        await page.locator(".source .t-control").first().getAttribute("data-code"), "U+2028");
    const after = await page.evaluate(() => document.querySelectorAll("script, img, b").length);
    CheckEqual("no element comes from a text", after, before);
    await Close(page, "hostile");
}

async function TestFindings(file, report) {
    const page = await Open(file);
    CheckEqual("the headline says what became of all that was found",
        (await Text(page, "#verdict")).replace(/[\d,]+ (?=[cfuo])/g, "N "),
        `${Formatted(report.totals.commandsFound)} legacy commands were found: N converted, ` +
        "N failed, N unreadable, N overlooked. In 2 places other text was lost or joined.");
    const above = await page.evaluate(() => {
        const top = (id) => document.getElementById(id).getBoundingClientRect().top;
        return top("finding-chart") < top("reason-chart");
    });
    Check("findings stand above failures", above);
    await page.locator("#finding-chart button", {hasText: "Open comment"}).click();
    CheckEqual("a code leads to its files", await FirstPaths(page, 5), ["odd/zones/macros.syn"]);
    await page.locator("#row-0").click();
    await WaitForFile(page);
    CheckEqual("and to its findings there", [await page.locator("#finding-filter").inputValue(),
        await page.locator(".finding").count()], ["open-comment", 1]);
    await page.locator("#finding-filter").selectOption("");
    CheckEqual("many are shown in parts", [await page.locator(".finding").count(),
        await Text(page, "#more-findings")], [100, "Show more of 53 further findings"]);
    await page.locator("#more-findings").focus();
    await page.keyboard.press("Enter");
    CheckEqual("until all are", [await page.locator(".finding").count(),
        await page.locator("#more-findings").isVisible()], [153, false]);
    const order = await page.locator(".finding .outcome").allInnerTexts();
    CheckEqual("what was overlooked comes first",
        [order[0], order[150], order[151], order[152]],
        ["Overlooked", "Overlooked", "Changed", "Worth knowing"]);
    const linesOfOpened = () => page.locator("details[open]").last().locator(".line");
    await page.locator(".finding").first().focus();
    await page.keyboard.press("Enter");
    await linesOfOpened().first().waitFor();
    CheckEqual("the keyboard opens a finding, which shows its text",
        await page.locator("details[open] .line").allTextContents(),
        ["TABLES", "  /TABLE=a BY b."]);
    CheckEqual("with its line numbers",
        await page.locator("details[open] .line").first().getAttribute("data-number"), "10");
    await page.locator(".finding").last().click();
    await linesOfOpened().first().waitFor();
    CheckEqual("markup in a finding is text",
        await page.locator("details[open] .line").last().textContent(), kScript);
    CheckEqual("how it was read is told", [
        await page.locator("#file-facts div", {hasText: "Layout"}).innerText(),
        await page.locator("#file-facts div", {hasText: "Blank lines"}).innerText(),
    ].map((text) => text.replace(/\s+/g, " ")),
    ["Layout batch (in which it reads well)", "Blank lines mean nothing"]);
    const facts = await page.locator("#file-facts dt").allInnerTexts();
    Check("the time of a file is no outcome",
        facts.includes("Last change") && !facts.includes("Changed"), facts);
    await CheckAxe(page, "findings");
    await page.setViewportSize({width: 400, height: 800});
    const wide = await page.evaluate(() => document.documentElement.scrollWidth);
    Check("a narrow window needs no scrolling sideways", wide <= 400, wide);
    await Picture(page, "findings-narrow");
    await page.setViewportSize({width: 1280, height: 900});
    await Picture(page, "findings");
    await GoTo(page, HashOf({path: "odd/zones/encoding.syn"}));
    await page.locator(".finding").click();
    CheckEqual("what is about a whole file has no text", await Text(page, "details[open] .empty"),
        "This is about the file as a whole.");
    await GoTo(page, HashOf({path: "odd/zones/data.csv"}));
    CheckEqual("what was not converted says why", await Text(page, "#no-commands"),
        "No legacy command was found in this file, so it was not converted.");
    Check("and has no findings", await page.locator("#file-findings").isHidden());
    await Close(page, "findings");
}

async function TestEqualFailures() {
    const failed = (line, error) => ({...FailedCommand(line, line, () => 0), error});
    const report = MakeReport([
        MakeFile("a.syn", [kChart, failed(3, "one"), failed(9, "two"), failed(12, "one")], {}),
        MakeFile("b.syn", [], {}), MakeFile("c/c.syn", [failed(4, "one")], {}),
    ], {});
    const page = await OpenReport("equal", report);
    const rows = await page.locator("#groups tbody tr").allInnerTexts();
    CheckEqual("equal failures are told together", rows.map((row) => row.replace(/\s+/g, " ")),
        ["One One correction mends 3 commands in 2 files First command"]);
    await page.locator("#groups th button").click();
    CheckEqual("a group leads to its files", await FirstPaths(page, 5), ["a.syn", "c/c.syn"]);
    await page.locator("#clear").click();
    CheckEqual("and back to all", await Text(page, "#count"), "3 files");
    await page.locator("#groups td button").click();
    const next = async () => {
        const opened = await page.locator("[aria-expanded=true]").getAttribute("id");
        return `${await Text(page, "#file-title")} ${opened}`;
    };
    const met = [await next()];
    for (let i = 0; i < 3; ++i) {
        await page.locator(".equal button").click();
        met.push(await next());
    }
    CheckEqual("from each there is a way to the next", met, ["a.syn command-1", "a.syn command-3",
        "c/c.syn command-0", "a.syn command-1"]);
    await GoTo(page, HashOf({path: "a.syn"}, 2));
    CheckEqual("one alone has none", await page.locator(".equal").count(), 0);
    await CheckAxe(page, "equal failures");
    await page.setViewportSize({width: 400, height: 800});
    const wide = await page.evaluate(() => document.documentElement.scrollWidth);
    Check("a narrow window needs no scrolling sideways for them", wide <= 400, wide);
    await Close(page, "equal failures");

    const none = await OpenReport("no-groups", MakeReport([MakeFile("a.syn", [kChart], {})], {}));
    Check("without equal failures there is no such list", await none.locator("#equal").isHidden());
    await Close(none, "no equal failures");
}

const ScrollPlace = (page) => page.evaluate(() => Math.round(scrollY));

// Lists that start short grow by steps, however long they are.
async function TestLongLists() {
    const count = 225;
    const numbers = [...Array(count).keys()];
    const report = MakeReport([MakeFile("a.syn", [FailedCommand(3, 1, () => 0),
        FailedCommand(9, 1, () => 0)], {part: 0})], {
        otherSignOffs: numbers.map((number) => ({
            path: `${number}.syn`, hash: TextHash("gone"), number: 1, copies: 1, state: "checked",
            remark: "", firstLine: 1,
        })),
        parts: numbers.map((number) => ({name: `${number}.html`, folder: `${number}`})),
    });
    const groups = numbers.map(() => ({error: "tables-syntax", places: [[0, 0], [0, 1]]}));
    const file = path.join(g_folder, "long.html");
    fs.writeFileSync(file, MakePage(report, groups));
    const page = await Open(file);
    for (const [table, button, first] of [["groups", "more-groups", 10],
        ["part-list", "more-parts", 20], ["signed-others", "more-signed", 10]]) {
        const rows = () => page.locator(`#${table} tbody tr`).count();
        const shown = [];
        while (await page.locator(`#${button}`).isVisible()) {
            shown.push(await rows(), await Text(page, `#${button}`));
            await page.locator(`#${button}`).click();
        }
        const left = count - first;
        CheckEqual(`${table} grows by steps`, [...shown, await rows()], [
            first, `Show 100 more of ${left}`, first + 100, `Show 100 more of ${left - 100}`,
            first + 200, `Show ${left - 200} more`, count]);
    }
    await Close(page, "long lists");
}

async function TestWork() {
    const failed = (line) => ({...FailedCommand(line, line, () => 0), error: "strange"});
    const report = MakeReport([
        MakeFile("a/one/x.syn", [failed(3), failed(9), kChart], {}),
        WithFindings(MakeFile("a/two.syn", [], {}), [MakeFinding("macro-body", "overlooked", 4, {}),
            MakeFinding("macro-body", "overlooked", 14, {})]),
        MakeFile("b/y.syn", [failed(5)], {}), MakeFile("z.syn", [], {}),
    ], {});
    const page = await OpenReport("work", report);
    const rows = async (table) => (await page.locator(`#${table} tr`).allInnerTexts())
        .map((row) => row.replace(/\s+/g, " ").trim());
    // One failure at 15 minutes, two equal ones at 1, two warnings at 2, two macros at 45.
    CheckEqual("the work is estimated", await Text(page, "#work-sum"),
        "By the minutes below, what is left takes a person about 1 h 51 min.");
    CheckEqual("each kind has its part", (await rows("minutes")).slice(1), [
        "Macro body 2 1 h 30 min", "Strange 1 15 min", "Each further equal failure 2 2 min",
        "Warning 2 4 min"]);
    CheckEqual("folders are summed up", (await rows("folders")).slice(1), [
        "a/ 2 5 4 1 h 50 min", "b/ 1 1 1 1 min", "Files in no other folder 1 0 0 0 min",
        "All of these 4 6 5 1 h 51 min"]);
    await page.locator("#folders button", {hasText: "a/"}).click();
    CheckEqual("a folder has its parts", (await rows("folders")).slice(1), [
        "Files in no other folder 1 2 2 1 h 30 min", "one/ 1 3 2 20 min",
        "All of these 2 5 4 1 h 50 min"]);
    CheckEqual("the list shows its files", await FirstPaths(page, 5), ["a/one/x.syn", "a/two.syn"]);
    await page.locator("#folder-up").click();
    CheckEqual("the way up leads to all", await Text(page, "#count"), "4 files");
    const macro = page.getByLabel("Minutes for Macro body");
    await macro.fill("10");
    CheckEqual("other minutes change the sum", await Text(page, "#work-sum"),
        "By the minutes below, what is left takes a person about 41 min.");
    await macro.press("Enter");
    Check("they stand in the address",
        page.url().endsWith("#minutes=finding.macro-body.10"), page.url());
    await page.locator("#row-0").click();
    await WaitForFile(page);
    Check("and stay there", page.url().includes("minutes=finding.macro-body.10"), page.url());
    await page.locator("#close-file").click();
    await page.reload();
    CheckEqual("an address brings them back", await macro.inputValue(), "10");
    await page.emulateMedia({media: "print"});
    CheckEqual("they are printed, and what is usual", (await rows("minutes"))[1],
        "Macro body 2 10 usual: 45 20 min");
    Check("without their boxes", await macro.isHidden());
    await page.emulateMedia({media: "screen"});
    await page.setViewportSize({width: 1400, height: 300});
    await page.locator("#usual-minutes").click();
    const places = [await ScrollPlace(page)];
    CheckEqual("the usual ones come back", [await macro.inputValue(),
        page.url().includes("minutes")], ["45", false]);
    await macro.fill("46");
    await macro.press("Enter");
    places.push(await ScrollPlace(page));
    await macro.fill("45");
    await macro.press("Enter");
    places.push(await ScrollPlace(page));
    CheckEqual("and leave nothing in the address", page.url().includes("#"), false);
    Check("changing minutes scrolls nowhere",
        places[0] > 0 && places.every((place) => place === places[0]), places);
    await page.setViewportSize({width: 1400, height: 900});
    await macro.fill("-1");
    CheckEqual("what is no number of minutes counts as usual", (await rows("minutes"))[1],
        "Macro body 2 1 h 30 min");
    await CheckAxe(page, "work");
    await page.setViewportSize({width: 400, height: 800});
    const wide = await page.evaluate(() => document.documentElement.scrollWidth);
    Check("a narrow window needs no scrolling sideways for the work", wide <= 400, wide);
    await Picture(page, "work-narrow", "#work");
    await Close(page, "work");
}

// Writes an index and its parts, one for each topmost folder, and returns the index's file.
function WriteParts(name, report) {
    const folderOf = (file) => file.path.slice(0, Math.max(0, file.path.indexOf("/")));
    const folders = [...new Set(report.files.map(folderOf))];
    const parts = folders.map((folder, number) => ({name: `${name} ${number}.html`, folder}));
    const signOffs = report.files.flatMap(({path: inside, signOffs: all}) =>
        (all || []).map((signOff) => ({path: inside, ...signOff})));
    const allSignOffs = [...signOffs, ...report.otherSignOffs];
    folders.forEach((folder, number) => {
        const files = report.files.filter((file) => folderOf(file) === folder);
        const part = {
            ...report, files, totals: Totals(files), otherSignOffs: [], allSignOffs, folder,
            index: `${name}.html`,
        };
        fs.writeFileSync(path.join(g_folder, parts[number].name), MakePage(part));
    });
    const files = report.files.map(({commands, findings, ...file}) => ({
        ...file, signOffs: undefined, part: folders.indexOf(folderOf(file)), commands: [], findings: [],
        errors: CountsOf(commands.map((command) => command.error)),
        codes: CountsOf(findings.map((finding) => finding.code)),
    }));
    const file = path.join(g_folder, `${name}.html`);
    fs.writeFileSync(file, MakePage({...report, files, parts, allSignOffs},
        GroupsOf(report.files)));
    return file;
}

async function TestParts() {
    const signOff = {hash: TextHash(kChart.source), number: 1, state: "checked", remark: "r",
        firstLine: kChart.firstLine};
    const report = MakeReport([
        MakeFile("a/one.syn", [kChart, FailedCommand(120, 1, () => 0)], {}),
        MakeFile("a/two.syn", [FailedCommand(9, 7, () => 0)], {}),
        MakeFile("b/c/three.syn", [kChart], {signOffs: [signOff]}),
        MakeFile("top.syn", [], {}),
    ], {});
    const file = WriteParts("50% of #1", report);
    const page = await Open(file);
    CheckEqual("the index reads nothing but itself", await CountRead(page), 1);
    CheckEqual("it lists its parts", (await page.locator("#part-list tbody tr").allInnerTexts())
        .map((row) => row.replace(/\s+/g, " ").trim()),
    ["a 2 3 2", "b 1 1 0", "the files in no folder 1 0 0"]);
    CheckEqual("it has the totals of all", await Text(page, "#verdict"),
        "4 legacy commands were found: 2 converted, 2 failed.");
    await page.locator("#search").fill("three");
    CheckEqual("it finds names", await FirstPaths(page, 5), ["b/c/three.syn"]);
    await page.locator("#search").fill("level.mm");
    CheckEqual("but no texts", await FirstPaths(page, 5), []);
    await page.locator("#clear").click();
    await page.locator("#reason").selectOption("tables-syntax");
    CheckEqual("it filters", await FirstPaths(page, 5), ["a/one.syn", "a/two.syn"]);
    CheckEqual("sign-offs are counted", await Text(page, "#signed-count"), "1 command checked.");
    await CheckAxe(page, "index");
    await Picture(page, "index");
    await page.locator("#grid").focus();
    await page.keyboard.press("ArrowDown");
    await page.keyboard.press("Enter");
    await page.waitForURL(/%20of%20%231%200\.html#file=a%2Ftwo\.syn$/);
    await WaitForFile(page);
    CheckEqual("a file opens in its part", await Text(page, "#file-title"), "a/two.syn");
    CheckEqual("which has the files of its folder", await Text(page, "#count"), "2 files");
    Check("and no parts", await page.locator("#parts").isHidden());
    CheckEqual("there texts are found", await Searched(page, "level.mm"), ["a/one.syn"]);
    await CheckAxe(page, "part");
    await page.locator("#notices a").click();
    await page.waitForURL(/%20of%20%231\.html$/);
    await page.locator("#groups td button").click();
    await page.waitForURL(/#file=a%2Fone\.syn&command=2$/);
    await page.locator("#opened-1").waitFor();
    await page.goBack();
    await page.locator("#part-list a", {hasText: "b"}).click();
    await page.waitForURL(/%20of%20%231%201\.html$/);
    await page.locator("#row-0").click();
    await WaitForFile(page);
    CheckEqual("a part shows its sign-offs",
        await page.locator("#commands .signed").allTextContents(), ["Checked"]);
    await page.setViewportSize({width: 400, height: 800});
    const wide = await page.evaluate(() => document.documentElement.scrollWidth);
    Check("a narrow window needs no scrolling sideways for a part", wide <= 400, wide);
    await Close(page, "parts");

    // Part 2 has no failure, and so no kind of work at all.
    const hash = "#minutes=failure.table-too-large.7";
    const worker = await Open(file);
    const minutes = worker.getByLabel("Minutes for TABLES command not understood");
    await minutes.fill("20");
    await minutes.press("Enter");
    await worker.locator("#part-list a", {hasText: "the files in no folder"}).click();
    await worker.waitForURL(/2\.html#minutes=failure\.tables-syntax\.20$/);
    await worker.locator("#notices a").click();
    await worker.waitForURL(/%20of%20%231\.html#minutes=failure\.tables-syntax\.20$/);
    CheckEqual("minutes go along through the parts", await minutes.inputValue(), "20");
    await worker.locator("#usual-minutes").click();
    CheckEqual("and no longer when they are the usual ones",
        (await worker.locator("#part-list a").first().getAttribute("href")).includes("#"), false);
    await worker.goto(pathToFileURL(file).href + hash);
    await worker.reload();
    CheckEqual("minutes of a kind that does not occur are kept for where it does",
        await worker.locator("#part-list a").first().getAttribute("href"), `${encodeURIComponent(
            "50% of #1 0.html")}${hash}`);
    await Close(worker, "minutes and parts");

    const direct = await Open(file, {hash: HashOf(report.files[0], 1)});
    await direct.waitForURL(/%200\.html#file=a%2Fone\.syn&command=2$/);
    await direct.locator("#opened-1").waitFor();
    CheckEqual("an address of the index leads on", await Text(direct, "#file-title"), "a/one.syn");
    CheckEqual("from any part all sign-offs are saved", await (async () => {
        await direct.locator("#opened-1 .sign-off select").selectOption("mended");
        return (await SavedSignOffs(direct)).signOffs.map((one) => [one.path, one.state]);
    })(), [["a/one.syn", "mended"], ["b/c/three.syn", "checked"]]);
    await Close(direct, "address of an index");
}

async function TestSinceLastRun() {
    const files = [
        WithFindings(MakeFile("a.syn", [kChart, FailedCommand(120, 1, () => 0),
            {...kChart, firstLine: 300}], {changes: {mended: [90], new: [200], gone: [7, 1012]}}),
            [MakeFinding("same-line", "overlooked", 200, {}), MakeFinding("include", "told", 200,
                {})]),
        MakeFile("b.syn", [FailedCommand(3, 1, () => 0)], {changes: {new: [3]}}),
        MakeFile("c.syn", [kChart], {}),
    ];
    const since = {
        started: "2026-11-20T09:30:00Z", mended: 1, new: 2, stillFailing: 1, gone: 1202,
    };
    const page = await OpenReport("since", MakeReport(files, {sinceLastRun: since}));
    CheckEqual("the run before is named", (await Text(page, "#since-run")).replace(" at ", ", "),
        "Commands that have failed, are unreadable or were overlooked, compared with the report " +
        "of 20 November 2026, 09:30 UTC.");
    CheckEqual("what has changed is told", (await page.locator("#since-sums tbody tr")
        .allInnerTexts()).map((row) => row.replace(/\s+/g, " ").trim()), [
        "Mended: converted now 1 in 1 file", "New: were converted or not there 2 in 2 files",
        "Still failing: not converted, as before 1 in 1 file",
        "Gone: not there any more 1,202 in 1 file"]);
    for (const [label, expected] of [["New", ["a.syn", "b.syn"]], ["Mended", ["a.syn"]],
        ["Still failing", ["a.syn"]], ["Gone", ["a.syn"]]]) {
        await page.locator("#since-sums button", {hasText: label}).click();
        CheckEqual(`${label} leads to its files`, await FirstPaths(page, 5), expected);
    }
    await page.locator("#row-0").click();
    await WaitForFile(page);
    CheckEqual("in a file the commands are marked",
        await page.locator("#commands .change").allTextContents(), ["Mended", "", ""]);
    CheckEqual("and what was overlooked",
        await page.locator("#findings .change").allTextContents(), ["New"]);
    CheckEqual("what is gone is told", (await page.locator("#file-facts div",
        {hasText: "Gone"}).innerText()).replace(/\s+/g, " "),
    "Gone since the last run 2 commands not converted then, from lines 7, 1,012");
    await page.locator("#command-filter").selectOption("mended");
    CheckEqual("they can be listed", await Text(page, "#command-count"), "1 command");
    await CheckAxe(page, "since the last run");
    await page.setViewportSize({width: 400, height: 800});
    const wide = await page.evaluate(() => document.documentElement.scrollWidth);
    Check("a narrow window needs no scrolling sideways for changes", wide <= 400, wide);
    await Close(page, "since the last run");

    const first = await OpenReport("first", MakeReport([MakeFile("a.syn", [kChart], {})], {}));
    Check("a first run has nothing to compare with", await first.locator("#since").isHidden());
    await Close(first, "first run");
}

// The same as the page's own, written another way.
function TextHash(text) {
    let hash = 0xcbf29ce484222325n;
    for (const byte of Buffer.from(text)) {
        hash = ((hash ^ BigInt(byte)) * 0x100000001b3n) & 0xffffffffffffffffn;
    }
    return hash.toString(16).padStart(16, "0");
}

// Saves with the keyboard and returns what was saved.
async function SavedSignOffs(page) {
    const [download] = await Promise.all([
        page.waitForEvent("download"), page.locator("#save-signed").press("Enter")]);
    CheckEqual("the file has its name", download.suggestedFilename(), "quillet-signoff.json");
    return JSON.parse(fs.readFileSync(await download.path(), "utf8"));
}

async function TestSignOffs() {
    const copy = FailedCommand(60, 2, () => 0);
    const hash = TextHash(copy.source);
    const mended = {
        hash, number: 2, copies: 2, state: "mended", remark: "by <b>Ann</b>", firstLine: 60,
    };
    const gone = {
        path: "gone.syn", hash: TextHash("gone"), number: 1, state: "checked",
        remark: kScript, firstLine: 7,
    };
    const overlooked = MakeFinding("open-comment", "overlooked", 40, {});
    const hostile = {...kChart, source: kHostile.join("\n"), firstLine: 80};
    const inMacro = {...kChart, firstLine: 95};
    const files = [
        WithFindings(MakeFile("a.syn",
            [FailedCommand(30, 2, () => 0), copy, hostile, inMacro], {signOffs: [mended]}),
            [overlooked, MakeFinding("macro-body", "overlooked", 95, {})]),
        MakeFile("b/\ufffd.syn", [kChart], {rawPath: "b/%FF.syn"}),
    ];
    const page = await OpenReport("signed", MakeReport(files, {otherSignOffs: [gone]}));
    const badges = () => page.locator("#commands .signed").allTextContents();
    const count = () => Text(page, "#signed-count");
    CheckEqual("sign-offs are counted", await count(),
        "1 command checked, 1 command mended by hand.");
    CheckEqual("those of commands that are no more are told",
        await page.locator("#signed-others td, #signed-others th[scope=row]").allTextContents(),
        ["gone.syn", "7", "Checked", kScript]);
    await page.locator("#outcome").selectOption("signed");
    CheckEqual("their files can be found", await FirstPaths(page, 5), ["a.syn"]);
    await page.locator("#outcome").selectOption("");
    await page.locator("#row-0").click();
    await WaitForFile(page);
    CheckEqual("of two copies the right one is marked", await badges(),
        ["", "Mended by hand", "", ""]);
    await page.locator("#command-filter").selectOption("signed");
    CheckEqual("what is signed off can be listed", await Text(page, "#command-count"), "1 command");
    await page.locator("#command-filter").selectOption("");
    await OpenCommand(page, 1);
    CheckEqual("the remark stands with it",
        await page.getByLabel("Remark").inputValue(), "by <b>Ann</b>");
    await page.emulateMedia({media: "print"});
    CheckEqual("and on paper", await Text(page, "#opened-1 > .printed"),
        "Mended by hand: by <b>Ann</b>");
    await page.emulateMedia({media: "screen"});
    await OpenCommand(page, 3);
    CheckEqual("what stands in a macro is signed off where it was overlooked",
        await page.locator("#opened-3 .sign-off").count(), 0);
    await OpenCommand(page, 2);
    Check("without a sign-off there is no remark", await page.getByLabel("Remark").isDisabled());
    await page.locator("#opened-2 .sign-off select").focus();
    await page.keyboard.press("ArrowDown");
    await page.keyboard.press("Tab");
    await page.keyboard.type("Looks right");
    CheckEqual("the keyboard signs off", await badges(), ["", "Mended by hand", "Checked", ""]);
    CheckEqual("the count follows", await count(), "2 commands checked, 1 command mended by hand. " +
        "Not everything is saved yet.");
    await page.locator(".finding").first().click();
    await page.locator("#findings .sign-off select").selectOption("mended");
    CheckEqual("so can be what was overlooked",
        (await page.locator("#findings .signed").allTextContents())[0], "Mended by hand");
    await CheckAxe(page, "sign-offs");
    await Picture(page, "signed");
    await GoTo(page, HashOf(files[1], 0));
    await page.locator("#opened-0 .sign-off select").selectOption("checked");
    const kept = {hash: TextHash(kChart.source), number: 1, copies: 1, state: "checked", remark: ""};
    const expected = [
        {path: "a.syn", hash: TextHash(overlooked.text), number: 1, copies: 2, state: "mended",
         remark: "", firstLine: 40},
        {path: "a.syn", ...mended},
        {path: "a.syn", hash: TextHash(hostile.source), number: 1, copies: 1, state: "checked",
         remark: "Looks right", firstLine: 80},
        {path: "b/\ufffd.syn", rawPath: "b/%FF.syn", ...kept, firstLine: kChart.firstLine}, gone,
    ];
    CheckEqual("all are saved", await SavedSignOffs(page),
        {format: "quillet-signoff", formatVersion: 1, signOffs: expected});
    CheckEqual("then nothing is left to save", await count(),
        "3 commands checked, 2 commands mended by hand.");
    await page.locator("#opened-0 .sign-off select").selectOption("");
    CheckEqual("a sign-off can be taken back", (await SavedSignOffs(page)).signOffs.length, 4);

    await GoTo(page, "");
    await page.reload();
    await GoTo(page, HashOf(files[1], 0));
    await AddSignOffs(page, SignOffText([
        {path: "b/\ufffd.syn", rawPath: "b/%FF.syn", ...kept, state: "mended"}]), "");
    CheckEqual("a saved file is added", [await count(), await badges()],
        ["1 command checked, 2 commands mended by hand. Not everything is saved yet.",
         ["Mended by hand"]]);
    await page.setViewportSize({width: 400, height: 800});
    const wide = await page.evaluate(() => document.documentElement.scrollWidth);
    Check("a narrow window needs no scrolling sideways for sign-offs", wide <= 400, wide);
    await Close(page, "sign-offs");
}

function SignOffText(signOffs, more) {
    return JSON.stringify({format: "quillet-signoff", formatVersion: 1, signOffs, ...more});
}

// Adds a file of this text and waits until the page has answered, with `told` in its answer.
async function AddSignOffs(page, text, told) {
    await page.evaluate(() => {
        document.getElementById("signed-problem").textContent = "waiting";
    });
    const file = path.join(g_folder, "saved.json");
    fs.writeFileSync(file, text);
    await page.locator("#open-signed").setInputFiles(file);
    await page.waitForFunction(() =>
        document.getElementById("signed-problem").textContent !== "waiting");
    const answer = await page.locator("#signed-problem").textContent();
    Check(`adding answers: ${told}`, told ? answer.includes(told) : answer === "", answer);
}

// What the program would refuse is not let in, for whoever saved it again would end the next run.
async function TestBrokenSignOffs() {
    const good = {path: "a.syn", hash: TextHash("x"), number: 1, state: "checked"};
    const page = await OpenReport("broken", MakeReport([MakeFile("a.syn", [kChart], {})], {}));
    const damage = [
        {firstLine: 1.5}, {firstLine: -3}, {firstLine: 2 ** 53}, {firstLine: "1"}, {number: 0},
        {number: 1.5}, {copies: 0}, {number: 3, copies: 2}, {copies: null}, {hash: "x"},
        {state: "done"}, {remark: 7}, {remark: "r".repeat(1048577)},
        {remark: "\u00e9".repeat(600000)}, {remark: "half \ud83d"}, {path: 7}, {path: ""},
        {path: "/a"}, {path: "a//b"}, {path: "a/../b"}, {path: "./a"}, {path: "a".repeat(262145)},
        {rawPath: "%ZZ"}, {rawPath: "%ff"}, {rawPath: "a b"}, {rawPath: "%"}, {rawPath: ""},
        {rawPath: "a%2F%2E%2E"}, {rawPath: "%FF".repeat(262145)}, {rawPath: null},
    ];
    const broken = [
        ["{", "it holds no sign-offs"], ["[]", "it holds no sign-offs"],
        [JSON.stringify({format: "quillet-signoff", formatVersion: 2}),
         "a later version has written it"],
        [SignOffText({}), "it holds no list of sign-offs"],
        [SignOffText([good, {}]), "signOffs[1] is damaged"],
        [SignOffText([good, {...good, remark: "other"}]),
         "two of its sign-offs are about the same command"],
        [SignOffText([good, {...good, path: "x", rawPath: "%61.syn"}]),
         "two of its sign-offs are about the same command"],
        [SignOffText([], {removed: {}}), "its list of those that were taken back is damaged"],
        [SignOffText([], {removed: [{...good, hash: 7}]}),
         "its list of those that were taken back is damaged"],
        ...damage.map((more) => [SignOffText([{...good, ...more}]), "signOffs[0] is damaged"]),
        [" ".repeat(67108865), "it is longer than 67,108,864 bytes"],
    ];
    for (const [text, problem] of broken) await AddSignOffs(page, text, problem);
    CheckEqual("broken files change nothing", await Text(page, "#signed-count"),
        "No command is signed off.");
    const most = {
        ...good, path: "x", rawPath: "%FF".repeat(262144), remark: "r".repeat(1048576),
        firstLine: 2 ** 53 - 1, number: 2 ** 53 - 1, later: [{}],
    };
    await AddSignOffs(page, SignOffText([most, {...good, path: "a".repeat(262144)}]), "");
    CheckEqual("what is just within the limits is let in", await Text(page, "#signed-count"),
        "2 commands checked.");
    await Close(page, "broken sign-offs");
}

// Work that is not in a saved file is not lost to it.
async function TestAddingSignOffs() {
    const [first, second] = [FailedCommand(30, 1, () => 0), FailedCommand(60, 2, () => 0)];
    const about = (command, state, remark) => ({
        path: "a.syn", hash: TextHash(command.source), number: 1, copies: 1, state, remark,
        firstLine: command.firstLine,
    });
    const [old, other] = [about(first, "checked", "old"), about(second, "checked", "")];
    const file = MakeFile("a.syn", [first, second, kChart], {
        signOffs: [old, other].map((signOff) => ({...signOff, path: undefined})),
    });
    const report = MakeReport([file], {});
    const page = await OpenReport("adding", report);
    const count = (on = page) => Text(on, "#signed-count");
    const saved = async (on) => (await SavedSignOffs(on)).signOffs
        .map((one) => `${one.firstLine} ${one.state} ${one.remark}`);
    await GoTo(page, HashOf(file, 0));
    await page.getByLabel("Remark").fill("new");
    await AddSignOffs(page, SignOffText([old, other]), "");
    CheckEqual("a remark is not replaced by what the report knew",
        [await page.getByLabel("Remark").inputValue(), await count()],
        ["new", "2 commands checked. Not everything is saved yet."]);
    await AddSignOffs(page, SignOffText([about(first, "mended", "theirs"),
        about(second, "mended", "theirs")]), "says something else of 1 command than");
    CheckEqual("nor by what others have said, who are told of",
        [await page.getByLabel("Remark").inputValue(), await count()],
        ["new", "1 command checked, 1 command mended by hand. Not everything is saved yet."]);
    await AddSignOffs(page, SignOffText([about(first, "checked", "new"),
        about(second, "mended", "theirs")]), "");
    CheckEqual("what a file has need not be saved", await count(),
        "1 command checked, 1 command mended by hand.");
    await AddSignOffs(page, SignOffText([old, other]), "");
    CheckEqual("an old file changes nothing",
        [await count(), await saved(page)],
        ["1 command checked, 1 command mended by hand. Not everything is saved yet.",
         ["30 checked new", "60 mended theirs"]]);

    // As in another part of the report.
    await page.locator("#opened-0 .sign-off select").selectOption("");
    await AddSignOffs(page, SignOffText([old]), "");
    CheckEqual("what was taken back stays so",
        [await page.locator("#opened-0 select").inputValue(), await count()],
        ["", "1 command mended by hand. Not everything is saved yet."]);
    const text = JSON.stringify(await SavedSignOffs(page));
    const part = await OpenReport("adding", report);
    await AddSignOffs(part, text, "");
    CheckEqual("and is taken back elsewhere", await count(part), "1 command mended by hand.");
    await GoTo(part, HashOf(file, 2));
    await part.locator("#opened-2 .sign-off select").selectOption("checked");
    CheckEqual("from where it is handed on", (await SavedSignOffs(part)).removed,
        [{path: "a.syn", hash: old.hash, number: 1, copies: 1}]);
    await GoTo(part, HashOf(file, 0));
    await part.locator("#opened-0 .sign-off select").selectOption("mended");
    CheckEqual("unless it is signed off again", (await SavedSignOffs(part)).removed, undefined);
    await Close(part, "another part");
    await Close(page, "adding sign-offs");
}

// What is open stays open where it was.
async function TestAddingWhileReading() {
    const commands = Array.from({length: 150}, (_, index) =>
        FailedCommand(9 * index + 1, index, () => 0));
    const file = MakeFile("a.syn", commands, {});
    const page = await OpenReport("reading", MakeReport([file], {}));
    await GoTo(page, HashOf(file, 120));
    await page.locator("#command-filter").selectOption("failed");
    await page.locator("#later-page").click();
    const one = (index) => ({
        path: "a.syn", hash: TextHash(commands[index].source), number: 1, state: "mended",
        remark: "r",
    });
    await AddSignOffs(page, SignOffText([one(120), one(121)]), "");
    CheckEqual("after adding the same page is shown", await Text(page, "#command-count"),
        "101 to 150 of 150 commands");
    CheckEqual("with the same filter", await page.locator("#command-filter").inputValue(), "failed");
    CheckEqual("the open command has its sign-off", [
        await page.locator("#opened-120 .sign-off select").inputValue(),
        await page.locator("#opened-120").getByLabel("Remark").inputValue()], ["mended", "r"]);
    CheckEqual("and so have the others", await page.locator("#command-121 .signed").textContent(),
        "Mended by hand");
    CheckEqual("they can be listed", await page.locator("#command-filter option").allTextContents(),
        ["All commands (150)", "Failed (150)", "Signed off (2)", "Not signed off (148)"]);
    await page.locator("#command-120").click();
    await page.locator("#opened-120").waitFor({state: "detached"});
    await page.locator("#command-120").click();
    CheckEqual("the next click closes, the one after it opens",
        await page.locator("#opened-120").count(), 1);
    await Close(page, "adding while reading");
}

async function TestSignOffTexts() {
    const command = (line, source) => ({...FailedCommand(line, 1, () => 0), source});
    const finding = (line, text) => MakeFinding("layout", "overlooked", line, {text});
    const file = WithFindings(MakeFile("a.syn", [
        command(3, " \t\v\f\r\nTABLES\n  /TABLE=a b. \n"), command(40, "+\tTABLES /TABLE=c."),
        command(50, "\u00a0x\u00a0"), command(60, " - \n")], {}),
    [finding(20, "TABLES\n  /TABLE=a b."), finding(30, "TABLES /TABLE=c.")]);
    const page = await OpenReport("texts", MakeReport([file], {}));
    for (const index of [0, 1, 2, 3]) {
        await GoTo(page, HashOf(file, index));
        await page.locator(`#opened-${index} .sign-off select`).selectOption("checked");
    }
    for (const index of [0, 1]) {
        await page.locator(".finding").nth(index).click();
        await page.locator("#findings .sign-off select").nth(index).selectOption("mended");
    }
    const [first, second] = ["TABLES\n  /TABLE=a b.", "TABLES /TABLE=c."].map(TextHash);
    CheckEqual("what is around a text is no part of it",
        (await SavedSignOffs(page)).signOffs.map((one) => [one.firstLine, one.hash, one.number]),
        [[3, first, 1], [20, first, 2], [30, second, 1], [40, second, 2],
         [50, TextHash("\u00a0x\u00a0"), 1], [60, TextHash(""), 1]]);
    await Close(page, "texts of sign-offs");
}

// Which of several copies a sign-off is about is known only as long as there are as many.
async function TestSignOffCopies() {
    const file = MakeFile("a.syn", [FailedCommand(3, 1, () => 0), FailedCommand(30, 1, () => 0)], {});
    const about = {path: "a.syn", hash: TextHash(file.commands[0].source), number: 1};
    const before = [1, 3].map((copies) =>
        ({...about, copies, state: "mended", remark: "", firstLine: 3}));
    const page = await OpenReport("copies", MakeReport([file], {otherSignOffs: before}));
    await GoTo(page, HashOf(file, 0));
    CheckEqual("a sign-off of other copies marks none",
        await page.locator("#commands .signed").allTextContents(), ["", ""]);
    await page.locator("#opened-0 .sign-off select").selectOption("checked");
    CheckEqual("each stays what it is",
        (await SavedSignOffs(page)).signOffs.map((one) => [one.number, one.copies, one.state]),
        [[1, 1, "mended"], [1, 2, "checked"], [1, 3, "mended"]]);
    await page.locator("#opened-0 .sign-off select").selectOption("");
    CheckEqual("and can be taken back alone",
        (await SavedSignOffs(page)).signOffs.map((one) => one.copies), [1, 3]);
    await Close(page, "copies");
}

async function TestHighlighting(file) {
    const page = await Open(file, {hash: HashOf({path: "household/wave3/tables.syn"}, 0)});
    const of = (side, kind) => page.locator(`.${side} .t-${kind}`).allTextContents();
    CheckEqual("commands", await of("source", "command"), ["TABLES"]);
    CheckEqual("subcommands", await of("source", "sub"),
        ["/OBSERVATION", "/FORMAT", "/FTOTAL", "/TABLE", "/STATISTICS", "/TITLE"]);
    CheckEqual("strings", await of("source", "string"), ["'Total of \"region\"'", "'Mean'", "'n'",
        "'Table 1. Income by region and sex, it''s weighted'"]);
    CheckEqual("comments", await of("source", "comment"), ["/* in thousands */"]);
    CheckEqual("words", await of("source", "keyword"), ["ZERO", "BY", "MEAN", "COUNT"]);
    await OpenCommand(page, 1);
    CheckEqual("the error's place", await page.locator(".place").allTextContents(),
        ["region"]);
    CheckEqual("the error's note", await Text(page, ".line-note"),
        "Line 33, column 15: Invalid TABLES command syntax.");
    CheckEqual("the reason in words", await Text(page, ".note h4"),
        "TABLES command not understood");
    await GoTo(page, HashOf({path: kMarkupName}, 2));
    CheckEqual("in a line that is not highlighted one character is marked",
        await page.locator(".place").allTextContents(), ["x"]);
    await Close(page, "highlighting");
}

// Each command is one that the program cannot convert, with the line and column that it tells.
async function TestPlaces() {
    const failed = (source, line, column, error) => ({
        type: "TABLES", outcome: "failed", firstLine: 5, lastLine: 6, source,
        error: error || "tables-syntax", errorLine: 4 + line, errorColumn: column, message: "m",
        warnings: [],
    });
    const cases = [
        ["a first line", failed("TABLES /TABLE=a b.", 1, 18), "b"],
        ["one that is indented", failed("   TABLES /TABLE=a b.", 1, 21), "b"],
        ["letters of several bytes", failed("TABLES /TABLE=\u00e9\ud83d\ude00 b.", 1, 19), "b"],
        ["tabs", failed("TABLES  \t  /TABLE=a b.", 1, 22), "b"],
        ["a subcommand", failed("TABLES /TABLE=a /FTOTAL=1.", 1, 24), "/FTOTAL"],
        ["a later line", failed("TABLES\n  /TABLE=a b.", 2, 12), "b"],
        ["a later line with a tab", failed("TABLES /FORMAT ZERO\n\t/TABLE=a b.", 2, 11), "b"],
        ["a number in a first line",
         failed("  TABLES /TABLE=a 1E b\n", 1, 21, "exponent-without-digits"), "E"],
        ["a number in a later line",
         failed("TABLES\n  /TABLE=a 1E b\n", 2, 13, "exponent-without-digits"), "E"],
        ["a quotation mark in a first line",
         failed("  TABLES  /TITLE='x\n", 1, 18, "unclosed-literal"), "'x"],
        ["a quotation mark in a later line",
         failed("TABLES\n  /TITLE='x\n", 2, 10, "unclosed-literal"), "'x"],
        ["a character in a first line",
         failed("TABLES /TABLE=a \u0001 b\n", 1, 17, "invalid-character"), "\u0001"],
        ["a character in a later line",
         failed("TABLES\n /TABLE=a \u0001 b\n", 2, 10, "invalid-character"), "\u0001"],
        ["no place", failed("TABLES a.", 1, 0), undefined],
    ];
    const file = MakeFile("a.syn", cases.map(([, command]) => command), {});
    const page = await OpenReport("places", MakeReport([file], {}));
    for (const [index, [name, , expected]] of cases.entries()) {
        await GoTo(page, HashOf(file, index));
        CheckEqual(`the place is marked: ${name}`,
            (await page.locator(".place").allTextContents())[0], expected);
    }
    await Close(page, "places");
}

async function TestAddress(file) {
    const target = {path: "household/wave3/tables.syn"};
    const page = await Open(file, {hash: HashOf(target, 1)});
    CheckEqual("an address opens a file", await Text(page, "#file-title"), target.path);
    CheckEqual("an address opens a command",
        await page.locator("[aria-expanded=true]").getAttribute("id"), "command-1");
    CheckEqual("the opened command has the focus", await Focused(page), "command-1");
    const place = await page.locator("#command-1").boundingBox();
    Check("the opened command is in sight", place.y >= 0 && place.y < 800, place.y);
    await page.locator("#command-2").click();
    await page.locator("#opened-2").waitFor();
    Check("what is opened shows in the address", page.url().endsWith("&command=3"), page.url());
    await page.goBack();
    await page.locator("#opened-1").waitFor();
    CheckEqual("one command is open at a time", await page.locator(".opened").count(), 1);
    await GoTo(page, "#file=no/such<b>.syn");
    CheckEqual("a file that is not there", await Text(page, "#missing"),
        "This report has no file no/such<b>.syn.");
    Check("no file is open then", await page.locator("#file").isHidden());
    await GoTo(page, "#file=plain/frequencies.syn&command=9");
    CheckEqual("a file without commands", await Text(page, "#no-commands"),
        "The conversion has met no legacy command in this file.");
    Check("the notice is gone", await page.locator("#missing").isHidden());
    await page.locator("#close-file").click();
    await page.locator("#file").waitFor({state: "hidden"});
    CheckEqual("closing leads back to the list", await Focused(page), "grid");
    await Close(page, "address");
}

// Is the focus drawn? As a ring around the element, or around the row that stands for it.
function FocusShows(page) {
    return page.evaluate(() => {
        const element = document.activeElement;
        const style = getComputedStyle(element);
        return style.outlineStyle !== "none" && parseFloat(style.outlineWidth) >= 2;
    });
}

async function TestKeyboard(file) {
    const page = await Open(file);
    const press = (key) => page.keyboard.press(key);
    await press("/");
    CheckEqual("/ goes to the search", await Focused(page), "search");
    await press("/");
    CheckEqual("/ is a letter there", await page.locator("#search").inputValue(), "/");
    await press("Backspace");
    await page.locator("#grid").focus();
    await press("ArrowDown");
    await press("ArrowDown");
    await press("ArrowUp");
    const active = () => page.evaluate(() => document.getElementById(
        document.getElementById("grid").getAttribute("aria-activedescendant")).firstChild.title);
    CheckEqual("arrow keys move", await active(), "data/survey.dat");
    await press("End");
    CheckEqual("End goes to the last", await active(), "plain/kept.syn");
    const seen = await page.evaluate(() => {
        const row = document.querySelector(".active").getBoundingClientRect();
        const grid = document.getElementById("grid").getBoundingClientRect();
        return row.bottom <= grid.bottom + 1 && row.top >= grid.top;
    });
    Check("the active row is in sight", seen);
    await press("Home");
    await press("PageDown");
    Check("PageDown moves far", await page.evaluate(() =>
        Number(document.querySelector(".active").dataset.index) > 5));
    await press("Home");
    await press("ArrowDown");
    await press("ArrowDown");
    await press("Enter");
    await WaitForFile(page);
    CheckEqual("Enter opens the file", await Text(page, "#file-title"),
        "household/wave3/tables.syn");
    CheckEqual("the file's name has the focus", await Focused(page), "file-title");
    for (let i = 0; i < 9 && await Focused(page) !== "command-0"; ++i) await press("Tab");
    CheckEqual("Tab leads to the commands", await Focused(page), "command-0");
    Check("the focus shows on a command", await FocusShows(page));
    await press("ArrowDown");
    CheckEqual("arrow keys move there as well", await Focused(page), "command-1");
    await press("Enter");
    await page.locator("#opened-1").waitFor();
    await press("Tab");
    CheckEqual("the opened command's sign-off comes next", await page.evaluate(() =>
        document.activeElement.parentElement.firstChild.textContent), "Sign-off");
    await press("Tab");
    Check("and then its buttons", (await Focused(page)).includes("command"), await Focused(page));
    await press("Escape");
    await page.locator("#opened-1").waitFor({state: "detached"});
    CheckEqual("Escape closes the command", await Focused(page), "command-1");
    await Close(page, "keyboard");
}

// Walks through the page with the Tab key alone.
async function TestReach(file) {
    const page = await Open(file, {hash: HashOf({path: "household/wave3/tables.syn"}, 1)});
    await page.evaluate(() => document.activeElement.blur());
    const wanted = await page.evaluate(() => {
        const all = [...document.querySelectorAll("a, button, input, select, [tabindex='0']")]
            .filter((element) => element.checkVisibility() && !element.disabled);
        all.forEach((element, index) => { element.dataset.stop = index; });
        return all.length;
    });
    const met = new Set();
    const dim = [];
    for (let i = 0; i < wanted + 10; ++i) {
        await page.keyboard.press("Tab");
        const stop = await page.evaluate(() => document.activeElement.dataset.stop);
        if (stop === undefined) continue;
        met.add(stop);
        if (!await FocusShows(page)) dim.push(await Focused(page));
    }
    Check("there is much to reach", wanted > 20, wanted);
    CheckEqual("everything can be reached with Tab", met.size, wanted);
    CheckEqual("the focus always shows", dim, []);
    await Close(page, "reach");
}

async function TestLooks(file) {
    const failing = {path: "household/wave3/tables.syn"};
    for (const scheme of ["light", "dark"]) {
        const page = await Open(file, {hash: HashOf(failing, 1), scheme});
        await CheckAxe(page, `failed command, ${scheme}`);
        await Picture(page, `failed-${scheme}`);
        await page.locator("#command-2").click();
        await page.locator("#opened-2").waitFor();
        await CheckAxe(page, `command with warnings, ${scheme}`);
        await Picture(page, `warnings-${scheme}`, "#file");
        const back = await page.evaluate(() => getComputedStyle(document.body).backgroundColor);
        const light = Number(back.match(/\d+/)[0]) > 128;
        CheckEqual(`the page is ${scheme}`, light, scheme === "light");
        await Close(page, scheme);
    }
    const narrow = await Open(file, {hash: HashOf(failing, 1),
                                     options: {viewport: {width: 400, height: 800}}});
    const width = await narrow.evaluate(() => document.documentElement.scrollWidth);
    Check("a narrow window needs no scrolling sideways", width <= 400, width);
    await CheckAxe(narrow, "narrow");
    await Picture(narrow, "narrow");
    await Close(narrow, "narrow");
}

// Is all of each name's end within the cell that it stands in?
async function TestNames() {
    const series = Array.from({length: 12}, (_, i) => MakeFile(
        `household survey/wave 3/a name that is much longer than its column, part ${i}.syn`, [],
        {}));
    const file = WritePage("names", MakeReport(series, {}));
    for (const width of [400, 1280]) {
        const page = await Open(file, {options: {viewport: {width, height: 800}}});
        const ends = await page.evaluate(() =>
            [...document.querySelectorAll("#rows .path")].map((cell) => {
                const end = cell.querySelector(".end");
                const place = end.getBoundingClientRect();
                const room = cell.getBoundingClientRect();
                const isSeen = place.width > 0 && place.left >= room.left &&
                    place.right <= room.right && cell.textContent === cell.title;
                return isSeen ? end.textContent : "hidden";
            }));
        CheckEqual(`${width} pixels: names keep their ends`, ends,
            series.map((one) => one.path.slice(-10)));
        await Close(page, `names, ${width}`);
    }
}

async function TestBars(file, report) {
    const page = await Open(file);
    const widths = await page.evaluate(() =>
        [...document.querySelectorAll("#command-chart tbody tr")].map((row) => {
            const fill = row.querySelector(".fill");
            return fill ? parseFloat(fill.style.width) : 0;
        }));
    const totals = report.totals;
    const counts = [totals.commandsConverted, totals.commandsFailed, totals.commandsUnreadable,
        totals.commandsOverlooked];
    CheckEqual("a full bar is all there is", widths.map((width) => width.toFixed(3)),
        counts.map((count) => (count * 100 / totals.commandsFound).toFixed(3)));
    await Close(page, "bars");
}

async function TestMotion(file) {
    for (const [reducedMotion, still] of [["reduce", true], ["no-preference", false]]) {
        const page = await Open(file, {options: {reducedMotion}});
        const duration = await page.evaluate(() =>
            getComputedStyle(document.querySelector(".action")).transitionDuration);
        CheckEqual(`motion: ${reducedMotion}`, duration === "0s", still);
        await Close(page, "motion");
    }
}

async function TestPaper(file) {
    const page = await Open(file, {scheme: "dark"});
    await CheckPaper(page, "list");
    await page.emulateMedia({media: "print"});
    Check("print has all files, not those in sight", await Comes(page, () =>
        document.querySelectorAll("#rows [data-index]").length === 56));
    await page.emulateMedia({media: "screen"});
    Check("the screen has those in sight again", await Comes(page, () =>
        document.querySelectorAll("#rows [data-index]").length < 56));
    await GoTo(page, HashOf({path: "household/wave3/tables.syn"}, 1));
    await page.locator("#opened-1").waitFor();
    await CheckPaper(page, "command");
    await page.emulateMedia({media: "print"});
    Check("print has the opened command", await page.locator("#opened-1 .source").isVisible());
    Check("print leaves out the list then", await page.locator("#files").isHidden());
    await Close(page, "paper");
}

async function TestKinds() {
    const empty = await OpenReport("empty", MakeReport([], {}));
    CheckEqual("an empty report says so", await Text(empty, "#verdict"), "No files were found.");
    CheckEqual("its list as well", await Text(empty, "#rows"),
        "There are no files in this report.");
    await empty.locator("#grid").focus();
    for (const key of ["ArrowDown", "End", "Enter"]) await empty.keyboard.press(key);
    await CheckAxe(empty, "empty");
    await Close(empty, "empty");

    const dry = await OpenReport("dry", MakeReport([MakeFile("a.syn", [], {})], {dryRun: true}));
    Check("a dry run is told", (await Text(dry, "#notices")).includes("dry run"));
    CheckEqual("nothing to convert", await Text(dry, "#verdict"), "No legacy command was found.");
    await Close(dry, "dry run");

    const one = MakeReport([MakeFile("a.syn", [kChart], {})], {shard: {index: 2, count: 1200}});
    const shard = await OpenReport("shard", one);
    Check("a slice is told", (await Text(shard, "#notices")).includes("slice 2 of 1,200"));
    CheckEqual("one command", await Text(shard, "#verdict"),
        "The one legacy command that was found was converted.");
    await Close(shard, "shard");

    const bare = await Open(kTemplate);
    Check("a page without data says so", (await Text(bare, "#notices")).includes("no report"));
    Check("and shows nothing else", await bare.locator("#files").isHidden());
    await Close(bare, "bare");
}

function WritePage(name, report) {
    const file = path.join(g_folder, `${name}.html`);
    fs.writeFileSync(file, MakePage(report));
    return file;
}

function OpenReport(name, report) {
    return Open(WritePage(name, report));
}

function CountElements(page, selector = "body *:not(script)") {
    return page.evaluate((wanted) => document.querySelectorAll(wanted).length, selector);
}

// How often the page has read JSON.
const CountRead = (page) => page.evaluate(() => window.parsed);

const SizeOf = (file) => `${Math.round(fs.statSync(file).size / 1e6)} MB`;

async function TestArchive() {
    const report = LargeReport(4000, 25);
    const count = report.totals.commandsConverted + report.totals.commandsFailed;
    Check("the archive is large", count >= 100000, count);
    const file = WritePage("archive", report);
    const page = await Open(file);
    await page.locator("#row-0").waitFor();
    const rows = await CountElements(page, "#rows [data-index]");
    Check("the list of 4,000 files draws the rows in sight", rows > 10 && rows < 60, rows);
    await page.locator("#search").fill("labour/1997");
    const ready = Date.now() - page.started;
    CheckEqual("only the summary has been read", await CountRead(page), 1);
    Check("only what is in sight is laid out", await CountElements(page) < 1500,
        await CountElements(page));
    await page.locator("#search").fill("");
    await page.locator("[data-column=failed] button").click();
    CheckEqual("sorting reads nothing", await CountRead(page), 1);
    await page.evaluate(() => { document.getElementById("grid").scrollTop = 2000 * 36; });
    await page.locator("#row-2005").waitFor();
    Check("scrolling draws what comes into sight", await CountElements(page) < 1500);
    await page.locator("[data-column=failed] button").focus();
    const opening = Date.now();
    await page.locator("#row-2005").click();
    await page.locator("#command-0").waitFor();
    await OpenCommand(page, 3);
    const took = Date.now() - opening;
    const laidOut = await CountElements(page);
    Check("a file and a command add what is in sight", laidOut < 2500, laidOut);
    CheckEqual("one file's commands have been read", await CountRead(page), 2);
    console.log(`4,000 files: list after ${ready} ms, file and command after ${took} ms, ` +
        `page of ${SizeOf(file)}`);
    await Close(page, "archive");
    for (const scheme of g_screenshots ? ["light", "dark"] : []) await PictureArchive(file, scheme);
}

async function PictureArchive(file, scheme) {
    const page = await Open(file, {scheme});
    await Picture(page, `overview-${scheme}`);
    if (scheme === "light") {
        await page.locator("#outcome").selectOption("stopped");
        await Print(page, "print-list");
        await page.locator("#row-0").click();
        await OpenCommand(page, 25);
        await Print(page, "print-command");
    }
    await Close(page, `overview, ${scheme}`);
}

async function TestManyCommands() {
    const report = LargeReport(1, 100000);
    const file = WritePage("many", report);
    const page = await Open(file);
    await page.locator("#row-0").waitFor();
    const ready = Date.now() - page.started;
    CheckEqual("a file of 100,000 commands: the list does not read them", await CountRead(page), 1);
    const opening = Date.now();
    await page.locator("#row-0").click();
    await page.locator("#command-99").waitFor();
    const opened = Date.now() - opening;
    CheckEqual("they are read once to be shown", await CountRead(page), 2);
    const elements = await CountElements(page);
    Check("a page of them is laid out", elements < 2500, elements);
    const showing = Date.now();
    await OpenCommand(page, 42);
    const shown = Date.now() - showing;
    CheckEqual("one that opens is not read again", await CountRead(page), 2);
    await page.locator("#later-page").click();
    Check("the next page", (await Text(page, "#command-count")).startsWith("101 to 200 of 100,0"),
        await Text(page, "#command-count"));
    CheckEqual("the address keeps what is open", await page.locator(".opened").count(), 0);
    await page.locator("#first-page").click();
    CheckEqual("it is open again on its page", await page.locator("#opened-42").count(), 1);
    await page.locator("#last-page").click();
    Check("nothing comes after the last page", await page.locator("#later-page").isDisabled());
    await page.locator("#command-filter").selectOption("failed");
    const failed = report.files[0].commands.filter((c) => c.outcome === "failed").length;
    Check("failed commands alone",
        (await Text(page, "#command-count")).endsWith(`of ${Formatted(failed)} commands`));
    await GoTo(page, HashOf(report.files[0], 430000));
    CheckEqual("an address of no command closes", await page.locator(".opened").count(), 0);
    await GoTo(page, HashOf(report.files[0], 73210));
    await page.locator("#opened-73210").waitFor();
    CheckEqual("an address leads to any of them", (await ReadSide(page, "source")).text,
        report.files[0].commands[73210].source);
    console.log(`100,000 commands in a file: list after ${ready} ms, commands after ` +
        `${opened} ms, one of them after ${shown} ms, page of ${SizeOf(file)}`);
    await Close(page, "many");
}

async function TestSamples(all) {
    const report = MixedReport();
    const file = WritePage("mixed", report);
    const scenarios = [
        ["any page", () => TestAnyPage(file, "mixed")], ["search", () => TestSearch(file)],
        ["search in texts", TestSearchInTexts], ["links", TestLinks],
        ["paths", () => TestPaths(file)], ["hostile", () => TestHostile(file, report)],
        ["findings", () => TestFindings(file, report)],
        ["equal failures", TestEqualFailures], ["work", TestWork], ["long lists", TestLongLists],
        ["parts", TestParts], ["since the last run", TestSinceLastRun], ["sign-offs", TestSignOffs],
        ["broken sign-offs", TestBrokenSignOffs], ["adding sign-offs", TestAddingSignOffs],
        ["adding while reading", TestAddingWhileReading],
        ["texts of sign-offs", TestSignOffTexts], ["copies", TestSignOffCopies],
        ["highlighting", () => TestHighlighting(file)], ["places", TestPlaces],
        ["address", () => TestAddress(file)],
        ["keyboard", () => TestKeyboard(file)], ["reach", () => TestReach(file)],
        ["looks", () => TestLooks(file)],
        ["names", TestNames], ["bars", () => TestBars(file, report)],
        ["motion", () => TestMotion(file)],
        ["paper", () => TestPaper(file)], ["kinds", TestKinds], ["archive", TestArchive],
        ["many commands", TestManyCommands],
    ];
    for (const [name, scenario] of scenarios) await Try(all, name, scenario);
}

// The page as it opens, and with the first command that failed.
async function PicturePage(file) {
    for (const scheme of g_screenshots ? ["light", "dark"] : []) {
        const page = await Open(file, {scheme});
        await Picture(page, `page-${scheme}`);
        if (scheme === "light") await Print(page, "page-print");
        const {report, chunks} = await ReadData(page);
        const failing = report.files.find((f) => f.chunk in chunks && f.failed > 0);
        if (failing) {
            const index = chunks[failing.chunk].commands.findIndex((c) => c.outcome === "failed");
            await GoTo(page, HashOf(failing, index));
            await Picture(page, `page-failed-${scheme}`);
            if (scheme === "light") await Print(page, "page-failed-print");
        }
        await Close(page, `picture, ${scheme}`);
    }
}

function ReadArguments() {
    const words = process.argv.slice(2);
    const at = words.indexOf("--screenshots");
    if (at >= 0) g_screenshots = words.splice(at, 2)[1] || "";
    const wrong = words.length > 1 || words.some((word) => word.startsWith("-"));
    if (wrong || (at >= 0 && !g_screenshots)) {
        console.error("usage: report_test.js [--screenshots FOLDER] [PAGE]");
        process.exit(2);
    }
    return words[0];
}

test("report", async (all) => {
    const given = ReadArguments();
    if (g_screenshots) fs.mkdirSync(g_screenshots, {recursive: true});
    g_folder = fs.mkdtempSync(path.join(os.tmpdir(), "report-test-"));
    try {
        g_browser = await chromium.launch({executablePath: "/usr/bin/chromium", args: kFlags});
        if (given) {
            await Try(all, "page", () => TestAnyPage(given, "page"));
            await Try(all, "pictures", () => PicturePage(given));
        } else {
            await TestSamples(all);
        }
    } finally {
        if (g_browser) await g_browser.close();
        fs.rmSync(g_folder, {recursive: true, force: true});
    }
});
