// The ES module entry under Node: the same engine as node.cjs.
import node from "./node.cjs";

export const createEngine = node.createEngine;
