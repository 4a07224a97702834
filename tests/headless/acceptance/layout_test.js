// Has an independent parser read an imported project: node layout_test.js FELSPAR
// The announcements' digits, English as base and French as subject, with one named group, laid out twice behind
// one another.

"use strict";
const { ok, deepStrictEqual: same } = require("assert");
const { execFileSync } = require("child_process");
const { existsSync, mkdtempSync, readFileSync, rmSync } = require("fs");
const { basename, join, resolve } = require("path");
const { tmpdir } = require("os");
const rppp = require("rppp");

const sounds = "/usr/share/asterisk/sounds";
const interval = 0.25;

function importTwice(program, folder) {
  const sides = ["fr_CA_f_June", "en_US_f_Allison"].map((language) => join(sounds, language, "digits"));
  const options = ["--group", "day-", "--match", "--ride", "--interval", String(interval)];
  const project = join(folder, "digits.rpp");
  execFileSync(program, ["import", ...sides, ...options, "-o", project]);
  execFileSync(program, ["import", ...sides, ...options, "--from-end", "--start", "2", "--onto", project]);
  return rppp.parse(readFileSync(project, "utf8"));
}

const blocks = (parent, token) => parent.contents.filter((entry) => entry.token === token);
const first = (parent, token) => blocks(parent, token)[0].params;
const close = (left, right) => Math.abs(left - right) < 1e-9;

function checkTrack(track, folder) {
  return blocks(track, "ITEM").map((item) => {
    const [position] = first(item, "POSITION");
    const [length] = first(item, "LENGTH");
    for (const source of blocks(item, "SOURCE")) ok(existsSync(resolve(folder, first(source, "FILE")[0])));
    return { track: first(track, "NAME")[0], name: basename(first(item, "NAME")[0]), position, end: position + length };
  });
}

const folder = mkdtempSync(join(tmpdir(), "felspar-"));
try {
  const tracks = blocks(importTwice(resolve(process.argv[2]), folder), "TRACK");
  const depths = tracks.map((track) => first(track, "ISBUS")[1]);
  same(tracks.map((track) => first(track, "NAME")[0]).sort(), ["None", "base", "base", "day-", "unique", "unique"].sort());
  same(depths.map((depth) => Math.sign(depth)), [1, 0, -1, 1, 0, -1]);
  same(depths.reduce((sum, depth) => sum + depth, 0), 0);

  const items = tracks.flatMap((track) => checkTrack(track, folder)).sort((a, b) => a.position - b.position);
  ok(items.length > 100 && items.length % 4 === 0, `${items.length} items`);
  items.forEach((item, i) => {
    same(item.track, i % 2 === 0 ? "base" : "unique");
    if (i % 2 === 1) same(item.name, items[i - 1].name); // partners, base first
    const gap = i === items.length / 2 ? 2 : interval;
    ok(i === 0 ? item.position === 0 : close(item.position, items[i - 1].end + gap), `${item.name} at ${item.position}`);
  });
} finally {
  rmSync(folder, { recursive: true });
}
