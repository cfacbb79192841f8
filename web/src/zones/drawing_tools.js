/** What corners are drawn with: all that needs the drawing library, apart from the course of a drawing. */
export { DrawingBar } from '../controls/drawing_bar.js';
export { KeyDrawing } from './key_drawing.js';
export { ShapeEditor } from './shape_editor.js';
