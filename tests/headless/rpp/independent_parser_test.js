// Has an independent parser read the project file that write_sample writes: node independent_parser_test.js PROGRAM

"use strict";
const assert = require("assert");
const { execFileSync } = require("child_process");
const { mkdtempSync, readFileSync, rmSync } = require("fs");
const { tmpdir } = require("os");
const { join } = require("path");
const rppp = require("rppp");

function parseSample(program) {
  const folder = mkdtempSync(join(tmpdir(), "felspar-"));
  try {
    const file = join(folder, "sample.rpp");
    execFileSync(program, [file]);
    const text = readFileSync(file, "utf8");
    return rppp.parse(text.replace(/[^\x20-\x7e\n]/gu, "_")); // it knows few letters
  } finally {
    rmSync(folder, { recursive: true });
  }
}

const project = parseSample(process.argv[2]);
const blocks = (parent, token) => parent.contents.filter((entry) => entry.token === token);
const params = (parent, token) => blocks(parent, token).map((entry) => entry.params);

assert.strictEqual(project.token, "REAPER_PROJECT");
assert.deepStrictEqual(project.params, [0.1, "6.19/felspar", 0]);
assert.deepStrictEqual(params(project, "CURSOR"), [[12.5]]);
assert.deepStrictEqual(params(project, "RECORD_PATH"), [["takes", ""]]);
assert.deepStrictEqual(params(project, "SAMPLERATE"), [[44100, 0, 0]]);
assert.deepStrictEqual(params(project, "TEMPO"), [[97.3, 3, 8]]);
assert.deepStrictEqual(
  params(project, "MARKER").map((values) => values.slice(0, 5)),
  [
    [1, 2.5, "first 'cue'", 0, 0],
    [7, 4, 'scene "one"', 1, 0x1010203],
    [7, 9.25, "", 1],
    [8, 9.25, "", 1, 0],
    [8, 9.25, "", 1],
  ]
);

const tracks = blocks(project, "TRACK");
assert.deepStrictEqual(tracks.map((track) => params(track, "NAME")[0][0]), ["group", ' > "quoted" <', ""]);
assert.deepStrictEqual(tracks.map((track) => params(track, "ISBUS")[0]), [[1, 1], [2, -1], [0, 0]]);
assert.deepStrictEqual(tracks.map((track) => params(track, "PEAKCOL")[0][0]), [0x1000000, 16576, 16576]);
assert.deepStrictEqual(tracks.map((track) => params(track, "MUTESOLO")[0]), [[0, 0, 0], [1, 2, 0], [0, 0, 0]]);
assert.deepStrictEqual(params(tracks[0], "VOLPAN"), [[0.5, 0.25, -1, -1, 1]]);
for (const track of tracks) assert.deepStrictEqual(params(track, "TRACKID")[0], track.params);

const items = blocks(tracks[1], "ITEM");
assert.deepStrictEqual(items.map((item) => params(item, "POSITION")[0][0]), [1 / 3, 10, 20]);
assert.deepStrictEqual(params(items[0], "NAME"), [["line_001.wav"], ["__ 'one' 'two' \"three\""]]);
assert.deepStrictEqual(params(items[0], "VOLPAN"), [[0.75, -0.5, -1.5, -1]]);
assert.deepStrictEqual(params(items[0], "TAKE"), [["SEL"]]);
assert.deepStrictEqual(params(items[0], "TAKEVOLPAN"), [[0, 0.5, -1]]);
assert.deepStrictEqual(
  blocks(items[0], "SOURCE").map((source) => [source.params[0], params(source, "FILE")[0][0]]),
  [
    ["WAVE", "audio/line's \"one\".wav"],
    ["WAVE", "/elsewhere/line_001 render.wav"],
  ]
);

const [envelope] = blocks(items[0], "VOLENV");
assert.deepStrictEqual(params(envelope, "ACT"), [[1, 2]]);
assert.deepStrictEqual(params(envelope, "PT"), [
  [0, 1, 0],
  [0.0000001, 0.00005, 0],
  [0.1, 0.5011872336272722, 0],
  [0.5, 2, 5, 0, 1, 0, -0.25],
  [0.5, 0, 4],
]);

const ids = JSON.stringify(project).match(/\{[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\}/g);
assert.strictEqual(new Set(ids).size, ids.length - tracks.length); // a track's stands there twice
