/** How zones look. Who can't tell red from green tells the two kinds by their lines: whole or dashed. */

const OUTLINE = { weight: 2, opacity: 0.9, fillOpacity: 0.12, interactive: false };

const coloured = (color) => ({ ...OUTLINE, color, fillColor: color });
const COLOURS = {
  onLight: { alert: '#c0392b', plain: '#1e7a4a', fresh: '#1459b3' },
  onDark: { alert: '#ff7262', plain: '#62d695', fresh: '#7ab8ff' },
};
/** Under the hands of the user. */
const DRAWN = { weight: 3, opacity: 1, fillOpacity: 0.2 };

/** @param {{alert: boolean}} zone @param {boolean} isDark the map under it */
export function zoneStyle({ alert }, isDark) {
  const colours = isDark ? COLOURS.onDark : COLOURS.onLight;
  return alert ? coloured(colours.alert) : { ...coloured(colours.plain), dashArray: '8 5' };
}

/** @param {{alert: boolean}|null} zone null for a new one, whose kind the page does not know */
export function drawnStyle(zone, isDark) {
  const colours = isDark ? COLOURS.onDark : COLOURS.onLight;
  return { ...(zone ? zoneStyle(zone, isDark) : coloured(colours.fresh)), ...DRAWN };
}
