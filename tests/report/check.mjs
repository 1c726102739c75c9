// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

// Opens pages in a browser and tells what is wrong with them.
//   node check.mjs BROWSER PICTURES PAGE EXPECTED...
// EXPECTED are counts that the page must show: marks, gaps, deviations and ambiguous values.
import { mkdirSync } from "node:fs";
import { createRequire } from "node:module";
import { pathToFileURL } from "node:url";

const require = createRequire(process.env.CHECK_REPORT_MODULES + "/");
const { chromium } = require("playwright-core");
const axe = require("axe-core");

const [browserPath, pictures, page, ...expected] = process.argv.slice(2);
const wanted = ["marks", "gaps", "deviations", "ambiguous"];
const faults = [];

const views = [1280, 390].flatMap((width) => ["light", "dark"].map((scheme) => ({ width, scheme })));

// What the page shows, by what the script is to count.
const counts = () => ({
    marks: document.querySelectorAll("a.mark").length,
    gaps: document.querySelectorAll(".lane .gap").length,
    deviations: document.querySelectorAll("#deviations tbody tr").length,
    ambiguous: document.querySelectorAll("#labels li.odd bdi:first-of-type").length,
});

// Elements that reach beyond the right edge, unless something around them scrolls.
const overflowing = () =>
    [...document.querySelectorAll("body *")]
        .filter((element) => !element.closest(".scroll, .hidden, .shapes"))
        .filter((element) => element.getBoundingClientRect().right > innerWidth + 1)
        .map((element) => `${element.tagName}.${element.className}`);

const untitled = () =>
    [...document.querySelectorAll("a.mark, .lane .gap")].filter((mark) => !mark.title.trim()).length +
    [...document.querySelectorAll("svg.chart")].filter(
        (chart) => !chart.querySelector("title")?.textContent || !chart.querySelector("desc")?.textContent,
    ).length;

const brokenLinks = () =>
    [...document.querySelectorAll("a[href^='#']")].filter(
        (link) => !document.getElementById(link.getAttribute("href").slice(1)),
    ).length;

async function checkFilter(tab, complain) {
    const input = tab.locator("#timeline input");
    const visible = () => tab.locator("#timeline tbody tr:not(.group):visible").count();
    const all = await visible();
    const firstClick = (await tab.locator("a.mark").first().getAttribute("title")).split("\n")[0];
    await input.fill("no such text");
    if ((await visible()) !== 0) complain("the filter keeps what does not match");
    await input.fill(firstClick);
    if ((await visible()) !== 1) complain(`the filter '${firstClick}' keeps ${await visible()} of ${all} rows`);
    await input.fill("");
    if ((await visible()) !== all) complain("an empty filter hides rows");
}

async function checkSort(tab, complain) {
    const table = tab.locator("table.sortable").last();
    const button = table.locator("thead button").first();
    const cells = () => table.locator("tbody td:first-child").allTextContents();
    await button.click();
    const up = await cells();
    await button.click();
    const down = await cells();
    const sorted = [...up].sort(new Intl.Collator("en", { numeric: true }).compare);
    if (up.join() !== sorted.join()) complain("a column is not sorted");
    if (down.join() !== [...down].sort(new Intl.Collator("en", { numeric: true }).compare).reverse().join())
        complain("a column is not sorted downwards");
}

async function checkFocus(tab, complain) {
    const mark = tab.locator("a.mark").first();
    await mark.focus();
    const told = await mark.evaluate((element) => getComputedStyle(element, "::after").content);
    const title = await mark.getAttribute("title");
    if (!told.includes(title.split("\n")[0])) complain("a focused mark does not tell its title");
    await mark.blur();
}

async function check(browser, { width, scheme }) {
    const name = `${width}-${scheme}`;
    const complain = (text) => faults.push(`${name}: ${text}`);
    const context = await browser.newContext({ viewport: { width, height: 900 }, colorScheme: scheme });
    const tab = await context.newPage();
    tab.on("console", (message) => complain(`console: ${message.text()}`));
    tab.on("pageerror", (error) => complain(`error: ${error.message}`));
    tab.on("request", (request) => request.url().startsWith("file:") || complain(`asks for ${request.url()}`));
    await tab.goto(pathToFileURL(page).href);
    const shown = await tab.evaluate(counts);
    wanted.forEach((what, i) => {
        if (expected.length > i && shown[what] !== Number(expected[i]))
            complain(`${shown[what]} ${what} instead of ${expected[i]}`);
    });
    await tab.screenshot({ path: `${pictures}/${name}.png`, fullPage: true });
    if ((await tab.evaluate(() => document.documentElement.scrollWidth)) > width) complain("the page scrolls sideways");
    for (const element of (await tab.evaluate(overflowing)).slice(0, 5)) complain(`overflows: ${element}`);
    const nameless = await tab.evaluate(untitled);
    if (nameless > 0) complain(`${nameless} marks or charts without a title`);
    const broken = await tab.evaluate(brokenLinks);
    if (broken > 0) complain(`${broken} links lead nowhere`);
    await checkFilter(tab, complain);
    await checkSort(tab, complain);
    await checkFocus(tab, complain);
    await tab.evaluate(axe.source);
    const { violations, passes } = await tab.evaluate(() => window.axe.run());
    if (passes.length < 10) complain("axe looked at nothing");
    for (const { id, nodes } of violations) complain(`axe: ${id}, ${nodes.length} times, e.g. ${nodes[0].html.slice(0, 120)}`);
    await context.close();
    return shown;
}

mkdirSync(pictures, { recursive: true });
const browser = await chromium.launch({
    executablePath: browserPath,
    args: ["--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run", "--disable-background-networking",
        "--disable-component-update", "--disable-sync"],
});
try {
    for (const view of views) console.log(`${view.width} ${view.scheme}:`, JSON.stringify(await check(browser, view)));
    const tab = await browser.newPage();
    await tab.goto(pathToFileURL(page).href);
    await tab.pdf({ path: `${pictures}/a4.pdf`, preferCSSPageSize: true });
} finally {
    await browser.close();
}
for (const fault of faults) console.error(`check-report: ${fault}`);
process.exit(faults.length > 0 ? 1 : 0);
