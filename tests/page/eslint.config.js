"use strict";
// What ESLint looks for in the script of the report page and in its test.

const js = require("@eslint/js");

const readable = (names) => Object.fromEntries(names.map((name) => [name, "readonly"]));

const browser = readable([
    "Blob", "HTMLElement", "TextEncoder", "URL", "URLSearchParams", "addEventListener", "clearTimeout", "document",
    "getComputedStyle", "history", "innerHeight", "location", "matchMedia", "performance",
    "requestAnimationFrame", "scrollY", "setTimeout", "window",
]);
const node = readable(["Buffer", "__dirname", "console", "module", "process", "require"]);

const rules = {
    ...js.configs.recommended.rules,
    "array-callback-return": "error",
    curly: ["error", "multi-line"],
    eqeqeq: "error",
    "no-else-return": "error",
    "no-eval": "error",
    "no-implied-eval": "error",
    "no-shadow": "error",
    "no-unused-expressions": "error",
    "no-var": "error",
    "prefer-const": "error",
    strict: ["error", "global"],
};

module.exports = [
    {
        files: ["**/migrate/page/*.js"],
        languageOptions: {ecmaVersion: 2022, sourceType: "script", globals: browser},
        linterOptions: {reportUnusedDisableDirectives: "error"},
        // Names are searched for control characters, which must not pass for others.
        rules: {...rules, "no-control-regex": "off"},
    },
    {
        // What is handed to the browser stands beside what runs here.
        files: ["tests/page/*.js"],
        languageOptions: {
            ecmaVersion: 2022, sourceType: "commonjs", globals: {...browser, ...node},
        },
        linterOptions: {reportUnusedDisableDirectives: "error"},
        rules,
    },
];
