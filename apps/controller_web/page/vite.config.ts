import { defineConfig } from 'vite';
import { firstViewLimit } from './tools/first-view-limit.ts';
import { licences } from './tools/licences.ts';

const apiServer = process.env['CONTROLLER_WEB'] ?? 'http://127.0.0.1:8720';

export default defineConfig({
  base: './',
  oxc: { jsx: { runtime: 'automatic', importSource: 'preact' } },
  worker: { format: 'es' },
  build: {
    target: 'es2022',
    modulePreload: { polyfill: false },
    assetsInlineLimit: 0, // The content security policy forbids data: addresses.
    reportCompressedSize: false,
    chunkSizeWarningLimit: 800, // three.js, which is loaded when a model is shown.
  },
  plugins: [firstViewLimit(200_000), licences()],
  server: { proxy: { '/api': apiServer } },
});
