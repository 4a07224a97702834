// Has an independent parser read the project file that write_sample writes: node independent_parser_test.js PROGRAM

"use strict";
const { deepStrictEqual: same, strictEqual } = require("assert");
const { execFileSync } = require("child_process");
const { mkdtempSync, readFileSync, rmSync } = require("fs");
const { tmpdir } = require("os");
const { join } = require("path");
const rppp = require("rppp");

function parseSample(program) {
  const folder = mkdtempSync(join(tmpdir(), "felspar-"));
  try {
    execFileSync(program, [join(folder, "sample.rpp")]);
    const text = readFileSync(join(folder, "sample.rpp"), "utf8");
    return rppp.parse(text.replace(/[^\x20-\x7e\n]/gu, "_")); // it knows few letters
  } finally {
    rmSync(folder, { recursive: true });
  }
}

const project = parseSample(process.argv[2]);
const blocks = (parent, token) => parent.contents.filter((entry) => entry.token === token);
const params = (parent, token) => blocks(parent, token).map((entry) => entry.params);
const firsts = (parents, token) => parents.map((parent) => params(parent, token)[0]);

same([project.token, project.params], ["REAPER_PROJECT", [0.1, "6.19/felspar", 0]]);
same(params(project, "RECORD_PATH"), [["takes", ""]]);
same(params(project, "TEMPO"), [[97.3, 3, 8]]);
const markers = params(project, "MARKER").map((values) => values.slice(0, 5));
same(markers.slice(0, 2), [[1, 2.5, "first 'cue'", 0, 0], [7, 4, 'scene "one"', 1, 0x1010203]]);
same(markers.slice(2), [[7, 9.25, "", 1], [8, 9.25, "", 1, 0], [8, 9.25, "", 1]]);

const tracks = blocks(project, "TRACK");
same(firsts(tracks, "NAME"), [["group"], [' > "quoted" <'], [""]]);
same(firsts(tracks, "ISBUS"), [[1, 1], [2, -1], [0, 0]]);
same(firsts(tracks, "PEAKCOL"), [[0x1000000], [16576], [16576]]);
same(firsts(tracks, "MUTESOLO"), [[0, 0, 0], [1, 2, 0], [0, 0, 0]]);
same(firsts(tracks, "TRACKID"), tracks.map((track) => track.params));

const items = blocks(tracks[1], "ITEM");
same(firsts(items, "POSITION"), [[1 / 3], [10], [20]]);
same(params(items[0], "NAME"), [["line_001.wav"], ["__ `one` 'two' \"three\""]]);
same(params(items[0], "VOLPAN"), [[0.75, -0.5, -1.5, -1]]);
same(params(items[0], "TAKE"), [["SEL"]]);
same(params(items[0], "TAKEVOLPAN"), [[0, 0.5, -1]]);
const sources = blocks(items[0], "SOURCE");
same(sources.map((source) => source.params[0]), ["WAVE", "WAVE"]);
same(firsts(sources, "FILE").map((values) => values[0]), ["audio/line's \"one\".wav", "/elsewhere/line_001 render.wav"]);

const [envelope] = blocks(items[0], "VOLENV");
same(params(envelope, "ACT"), [[1, 2]]);
same(params(envelope, "PT").slice(0, 3), [[0, 1, 0], [1e-7, 5e-5, 0], [0.1, 0.5011872336272722, 0]]);
same(params(envelope, "PT").slice(3), [[0.5, 2, 5, 0, 1, 0, -0.25], [0.5, 0, 4]]);

const ids = JSON.stringify(project).match(/\{[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\}/g);
strictEqual(new Set(ids).size, ids.length - tracks.length); // a track's stands there twice
