/**
 * Asks the client for tiles, one question at a time.
 *
 * An answer "nothing on this tile" does not say which tile it is about, so a second question may only go
 * out when the first is settled. A question without an answer is asked again; both answers may then still
 * come, so the next question waits a moment for the superfluous one to pass.
 */
import { parseTileFile } from './tile_names.js';

/** How long an answer may take, milliseconds. */
export const PATIENCE_MS = 2000;
/** How long superfluous answers are let pass after a question that had to be repeated, milliseconds. */
export const SETTLE_MS = 300;

/** Track tiles come first: the zone answer is the same image nearly everywhere. */
const KINDS = ['T', 'Z'];

export class TileQuestions {
  /**
   * @param {function(string, string): void} send sends the question for a kind and a tile suffix
   * @param {function(string, string, string): void} answered gets kind, suffix and file name of the answer
   * @param {{wait: function(function(): void, number): *, cancel: function(*): void}} clock
   */
  constructor(
    send,
    answered,
    clock = { wait: (run, ms) => setTimeout(run, ms), cancel: (timer) => clearTimeout(timer) },
  ) {
    this.send = send;
    this.answered = answered;
    this.clock = clock;
    this.waiting = { T: new Set(), Z: new Set() };
    this.current = null;
    this.started = false;
    this.timer = null;
  }

  /** Questions are collected from the beginning, and go out from now on. */
  start() {
    this.started = true;
    this.askSoon();
  }

  /** Puts a question behind those that wait; one that waits already keeps its place. */
  ask(kind, suffix) {
    this.waiting[kind].add(suffix);
    this.askSoon();
  }

  /** The tile is no longer in view. */
  forget(kind, suffix) {
    this.waiting[kind].delete(suffix);
    if (this.isCurrent(kind, suffix)) this.current.wanted = false;
  }

  forgetAll(kind) {
    this.waiting[kind].clear();
    if (this.current?.kind === kind) this.current.wanted = false;
  }

  /** An answer came: the file name of a tile or of a placeholder image. */
  answer(kind, fileName) {
    const question = this.current;
    if (!question || question.kind !== kind) return;
    const tile = parseTileFile(fileName);
    if (tile && tile.suffix !== question.suffix) return;
    this.current = null;
    this.wait(question.times > 1 ? SETTLE_MS : 0);
    if (question.wanted) this.answered(kind, question.suffix, fileName);
    if (question.times === 1) this.askNext();
  }

  isCurrent(kind, suffix) {
    return this.current?.kind === kind && this.current.suffix === suffix;
  }

  /** Leaves the page's script first, so that a report of the new view goes out before its questions. */
  askSoon() {
    if (this.started && !this.current && this.timer === null) this.wait(0);
  }

  askNext() {
    if (this.current) return;
    const kind = KINDS.find((each) => this.waiting[each].size > 0);
    if (!kind) return;
    const [suffix] = this.waiting[kind];
    this.waiting[kind].delete(suffix);
    this.current = { kind, suffix, times: 0, wanted: true };
    this.sendCurrent();
  }

  sendCurrent() {
    this.current.times += 1;
    this.wait(PATIENCE_MS);
    this.send(this.current.kind, this.current.suffix);
  }

  wait(ms) {
    if (this.timer !== null) this.clock.cancel(this.timer);
    this.timer = this.clock.wait(() => {
      this.timer = null;
      this.timeUp();
    }, ms);
  }

  timeUp() {
    // Also one that nobody wants any more is repeated until it is answered: its answer, when it names no tile,
    // would be taken for that of the next question.
    if (this.current) this.sendCurrent();
    else this.askNext();
  }
}
