/** What needs the names on the map, apart from the rest of the page, which starts without it. */
import { LabelPainter } from './label_painter.js';
import { preparations } from './label_placement.js';
import { NameFile } from './name_file.js';
import { PlaceFinder } from './place.js';

/**
 * @param {ArrayBuffer} bytes the file of names
 * @returns {{labels: LabelPainter, finder: PlaceFinder, preparations: (function(): void)[]}} the preparations
 *     may be run when there is time, one by one
 */
export function namedMap(bytes) {
  const names = new NameFile(bytes);
  const labels = new LabelPainter(names);
  return { labels, finder: new PlaceFinder(names), preparations: preparations(labels.placement) };
}
