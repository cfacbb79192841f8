/** How the names on the map look, by the kind of what they name. */

const FAMILY = '"DejaVu Sans", Verdana, sans-serif';

/**
 * @typedef {object} LabelStyle
 * @property {string} font @property {number} height of the text, pixels
 * @property {number} dot radius of the mark at the place, pixels; 0 where the name lies in the middle of an
 *     area
 * @property {string} colour which of a palette's colours it has
 * @property {string} spacing between letters @property {boolean} capitals
 */
function style(font, height, dot, colour, spacing = '0px', capitals = false) {
  return { font: `${font} ${FAMILY}`, height, dot, colour, spacing, capitals };
}

/** @type {Object<string, LabelStyle>} */
export const LABEL_STYLES = {
  country: style('bold 11.5px', 13, 0, 'area', '1.5px', true),
  state: style('11px', 12, 0, 'area', '1.5px', true),
  county: style('10.5px', 12, 0, 'area', '0.5px'),
  capital: style('bold 12.5px', 14, 3, 'text'),
  city: style('12.5px', 14, 2.5, 'text'),
  town: style('11.5px', 13, 2, 'text'),
  village: style('11px', 12, 1.6, 'text'),
  quarter: style('10.5px', 12, 1.2, 'area'),
};

export function shownText(name, { capitals }) {
  return capitals ? name.toUpperCase() : name;
}
