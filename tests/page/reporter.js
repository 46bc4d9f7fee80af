"use strict";
// Tells the results of report_test.js: what fails, what is said on the way, and at the end how many
// checks passed and failed. A check is a test two levels below that of the whole page. A test that
// holds others fails with them; it counts when it broke off by itself.

const kCheckLevel = 2;

module.exports = async function* report(events) {
    let passed = 0;
    let failed = 0;
    for await (const {type, data} of events) {
        if (type === "test:stdout" || type === "test:stderr") yield data.message;
        if (type === "test:pass" && data.nesting === kCheckLevel) ++passed;
        if (type === "test:fail") {
            const error = data.details.error;
            if (error.failureType === "subtestsFailed") continue;
            ++failed;
            const reason = error.cause || error;
            yield `FAIL ${data.name}: ${reason.stack || reason.message || reason}\n`;
        }
    }
    yield `report: ${passed} passed, ${failed} failed\n`;
};
