// Reads every .fnt file of a folder with an independent parser and with "fontbake --dump", prints each
// difference, and exits with 1 when there is one. Usage: node check_fonts.mjs FONTBAKE FOLDER

import { execFileSync } from 'node:child_process'
import { existsSync, readdirSync, readFileSync, statSync } from 'node:fs'
import { join } from 'node:path'
import parse from 'parse-bmfont-binary'

const [fontbake, folder] = process.argv.slice(2)
const problems = []

function compare(what, theirs, ours) {
  const a = JSON.stringify(theirs)
  const b = JSON.stringify(ours)
  if (a !== b) problems.push(`${what}: the parser has ${a}, fontbake ${b}`)
}

// Both lists in the same order, each entry with its fields in the order of `fields`.
function sorted(entries, fields) {
  const rows = entries.map((entry) => fields.map((field) => entry[field]))
  return rows.sort((a, b) => a[0] - b[0] || a[1] - b[1])
}

function compareLists(what, theirs, ours, fields) {
  const a = sorted(theirs, fields)
  const b = sorted(ours, fields)
  compare(`${what}, count`, a.length, b.length)
  for (let i = 0; i < Math.min(a.length, b.length); i++) compare(`${what} ${i}`, a[i], b[i])
}

function check(file) {
  const theirs = parse(readFileSync(join(folder, file)))
  const ours = JSON.parse(execFileSync(fontbake, ['--dump', join(folder, file)]))
  for (const field of ['lineHeight', 'base', 'scaleW']) {
    compare(`${file}: ${field}`, theirs.common[field], ours[field])
  }
  compare(`${file}: pages are square`, theirs.common.scaleH, ours.scaleW)
  compare(`${file}: page count`, theirs.common.pages, ours.pages.length)
  compare(`${file}: pages`, theirs.pages, ours.pages)
  const metrics = ['id', 'x', 'y', 'width', 'height', 'xoffset', 'yoffset', 'xadvance', 'page',
    'chnl']
  compareLists(`${file}: glyph`, theirs.chars, ours.chars, metrics)
  compareLists(`${file}: kerning`, theirs.kernings, ours.kernings, ['first', 'second', 'amount'])
  if (!theirs.info.face) problems.push(`${file}: no font name`)
  for (const page of theirs.pages) {
    const path = join(folder, `${page.slice(0, -4)}.raw`)
    const size = existsSync(path) ? statSync(path).size : 0
    compare(`${path}: size`, theirs.common.scaleW * theirs.common.scaleH, size)
  }
  console.log(`${file}: ${theirs.info.face}, ${theirs.chars.length} glyphs, ` +
    `${theirs.kernings.length} kerning pairs, ${theirs.pages.length} page(s)`)
}

const files = readdirSync(folder).filter((name) => name.endsWith('.fnt'))
if (files.length === 0) problems.push(`${folder}: no .fnt files`)
files.forEach(check)
problems.forEach((problem) => console.error(problem))
process.exit(problems.length === 0 ? 0 : 1)
