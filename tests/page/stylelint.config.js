"use strict";
// What Stylelint looks for in the style of the report page.

module.exports = {
    extends: "stylelint-config-recommended",
    rules: {
        // The rules are grouped by the parts of the page, which their selectors keep apart.
        "no-descending-specificity": null,
        "color-named": "never",
        "declaration-block-no-redundant-longhand-properties": true,
        "function-url-quotes": "always",
        "length-zero-no-unit": true,
        "selector-max-id": 1,
        "shorthand-property-no-redundant-values": true,
        // A page that fetches nothing has no use for them.
        "at-rule-disallowed-list": ["import", "font-face"],
        "function-disallowed-list": ["url"],
    },
};
