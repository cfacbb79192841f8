/** Draws the names on tiles, each with a halo of the ground's colour. */
import { DOT_RIM, LabelPlacement } from './label_placement.js';
import { shownText } from './label_styles.js';

const HALO_WIDTH = 2.5;

function applyStyle(context, { font, spacing }) {
  context.font = font;
  context.letterSpacing = spacing;
}

export class LabelPainter {
  /** @param {import('./name_file.js').NameFile} names */
  constructor(names) {
    this.names = names;
    const ruler = document.createElement('canvas').getContext('2d');
    this.placement = new LabelPlacement(names, (text, style) => {
      applyStyle(ruler, style);
      return Math.ceil(ruler.measureText(text).width);
    });
  }

  /**
   * @param {CanvasRenderingContext2D} context whose units are the tile's pixels @param {object} coords of the
   *     tile
   * @param {object} palette with colours text, area and halo
   */
  paint(context, coords, palette) {
    context.textBaseline = 'middle';
    context.lineJoin = 'round';
    for (const label of this.placement.forTile(coords)) this.paintLabel(context, palette, label);
  }

  paintLabel(context, palette, { index, x, y, left, top }) {
    const style = this.placement.style(index);
    if (style.dot > 0) {
      paintDisc(context, x, y, style.dot + DOT_RIM, palette.halo);
      paintDisc(context, x, y, style.dot, palette.text);
    }
    applyStyle(context, style);
    const text = shownText(this.names.name(index), style);
    // Whole pixels keep the text sharp.
    const [atX, atY] = [Math.round(left), Math.round(top + style.height / 2)];
    context.lineWidth = HALO_WIDTH;
    context.strokeStyle = palette.halo;
    context.strokeText(text, atX, atY);
    context.fillStyle = palette[style.colour];
    context.fillText(text, atX, atY);
  }
}

function paintDisc(context, x, y, radius, colour) {
  context.beginPath();
  context.arc(x, y, radius, 0, 2 * Math.PI);
  context.fillStyle = colour;
  context.fill();
}
