/**
 * The texts of the commands that the page sends to the client.
 *
 * Every text is safe as the last part of a URL as it stands. Positions in commands of fixed columns are
 * whole numbers in 1/600000 degree, pixels, or decimal degrees where a function says so.
 */

import { clampLatitude, wrapLongitude } from '../base/earth.js';

/** The client's angular unit: this many to a degree. */
const UNITS_PER_DEGREE = 600000;

/** A number behind its sign, filled up with zeros to exactly `width` characters. */
function padded(text, negative, width) {
  return negative ? '-' + text.padStart(width - 1, '0') : text.padStart(width, '0');
}

/** @param {number} value @param {number} width characters @returns {string} the value as a whole number */
export function fixedInteger(value, width) {
  const whole = Math.round(value);
  return padded(String(Math.abs(whole)), whole < 0, width);
}

/** Decimal degrees with seven places in 12 characters. */
function fixedDegrees(value) {
  const text = Math.abs(value).toFixed(7);
  return padded(text, value < 0 && Number(text) !== 0, 12);
}

function fixedAngle(degrees) {
  return fixedInteger(degrees * UNITS_PER_DEGREE, 10);
}

function fixedPosition(latitude, longitude) {
  return fixedAngle(clampLatitude(latitude)) + fixedAngle(wrapLongitude(longitude));
}

/** Decimal degrees without an exponent, which the client's number reader need not know. */
function plainDegrees(value) {
  const text = value.toFixed(7);
  return Number(text) === 0 ? text.replace('-', '') : text;
}

/** @param {number} step 1 to 17: a thing of the start-up has been made; 99: the page is ready */
export function statusCommand(step) {
  return 'S' + step;
}

/** The new centre of the map, degrees. */
export function centreCommand(latitude, longitude) {
  return 'M' + plainDegrees(clampLatitude(latitude)) + ',' + plainDegrees(wrapLongitude(longitude));
}

/** The new zoom of the map, 0 to 22. */
export function zoomCommand(zoom) {
  return 'Z' + zoom;
}

/**
 * The question for one tile.
 * @param {string} kind "T" track or "Z" zones
 * @param {string} suffix the 14 digits of tileSuffix()
 */
export function tileCommand(kind, suffix) {
  return 'T' + kind + suffix;
}

/** The pointer moved: view pixels, degrees, zoom. */
export function mouseMoveCommand(x, y, latitude, longitude, zoom) {
  return (
    'm' + fixedInteger(x, 5) + fixedInteger(y, 5) + fixedPosition(latitude, longitude) + fixedInteger(zoom, 3)
  );
}

/** A left click: view pixels, then the position in decimal degrees of 12 characters each. */
export function leftClickCommand(x, y, latitude, longitude) {
  return (
    'c' +
    fixedInteger(x, 5) +
    fixedInteger(y, 5) +
    fixedDegrees(clampLatitude(latitude)) +
    fixedDegrees(wrapLongitude(longitude))
  );
}

/** A right click at a position, degrees. */
export function rightClickCommand(latitude, longitude) {
  return 'F' + fixedPosition(latitude, longitude);
}

/** A right click where there is no position. */
export function plainRightClickCommand() {
  return 'C';
}

/** Six decimals, without the sign of a zero: the list of zones that the client sends has as many. */
function zoneDegrees(value) {
  const text = value.toFixed(6);
  return Number(text) === 0 ? text.replace('-', '') : text;
}

/**
 * The user has finished a zone's outline.
 * @param {number[][]} corners [latitude, longitude] in degrees; none when the zone keeps the outline that it has
 */
export function zoneShapeCommand(corners) {
  return (
    'zF' +
    corners
      .flat()
      .map((value) => zoneDegrees(value) + '~')
      .join('')
  );
}

/** The user has given up the outline that was being drawn. */
export function zoneCancelCommand() {
  return 'zC';
}

/** The new outline has got enough corners to be finished. */
export function zoneClosableCommand() {
  return 'z3';
}

/**
 * The answer to the question what lies at a place.
 *
 * The client decodes one byte an escape, loses what follows the last escape, and then drops two characters:
 * hence every character is escaped, and two spaces close the text. A character beyond Latin-1 becomes the
 * plain one nearest to it, or "?" where there is none.
 */
export function placeCommand(text) {
  return 'G' + [...text.normalize('NFC')].map(latin).join('').split('').map(escaped).join('') + '%20%20';
}

/** Letters and quotes that no accent sets apart from those of Latin-1. */
const PLAIN = Object.fromEntries(
  [
    'ŁL',
    'łl',
    'ıi',
    'ĐD',
    'đd',
    'ĦH',
    'ħh',
    'ŧt',
    'ƏE',
    'əe',
    'œo',
    'ŒO',
    "‘'",
    "’'",
    "ʻ'",
    '“"',
    '”"',
    '–-',
  ].map(([from, to]) => [from, to]),
);

function latin(character) {
  if (character.codePointAt(0) <= 0xff) return character;
  if (/\p{M}/u.test(character)) return '';
  const plain = PLAIN[character] ?? String.fromCodePoint(character.normalize('NFD').codePointAt(0));
  return plain.codePointAt(0) <= 0xff ? plain : '?';
}

function escaped(character) {
  return '%' + character.charCodeAt(0).toString(16).toUpperCase().padStart(2, '0');
}
